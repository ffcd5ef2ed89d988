// path_set_benchmark [--benchmark_…]
//
// Measures a set of 65,536 paths: ordinary paths, and paths that an attacker would choose to slow
// it down.
#include "text/CanonicalTextSet.h"

#include <benchmark/benchmark.h>
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

constexpr std::size_t pathCount = 65'536;
constexpr std::size_t commonLength = 100;

using Paths = std::vector<std::string>;
using Random = std::mt19937_64;

std::string randomPath(Random& random, std::size_t length) {
  constexpr std::string_view characters = "abcdefghijklmnopqrstuvwxyz0123456789 -_./";
  std::string path = "/";
  while (path.size() < length) {
    path += characters[random() % characters.size()];
  }
  return path;
}

Paths randomPaths() {
  Random random(1);
  Paths paths(pathCount);
  for (std::string& path : paths) {
    path = randomPath(random, commonLength / 2 + random() % (commonLength + 1));
  }
  return paths;
}

Paths pathsOfOneLength() {
  Random random(2);
  Paths paths(pathCount);
  for (std::string& path : paths) {
    path = randomPath(random, commonLength);
  }
  return paths;
}

/// Paths that differ in their last characters only.
Paths pathsWithOneBeginning() {
  Random random(3);
  const std::string beginning = randomPath(random, commonLength - 6);
  Paths paths;
  for (std::size_t number = 0; number < pathCount; ++number) {
    const std::string digits = std::to_string(number);
    paths.push_back(beginning);
    paths.back().append(6 - digits.size(), '0').append(digits);
  }
  return paths;
}

/// Paths for which `hash` has the same low bits. They share few buckets of a table without a seed.
template <class Hash>
Paths collidingPaths(Hash hash) {
  constexpr std::uint64_t lowBits = (1U << 10) - 1;
  Random random(4);
  Paths paths;
  std::string path = randomPath(random, commonLength);
  for (std::uint64_t number = 0; paths.size() < pathCount; ++number) {
    const std::string digits = std::to_string(number);
    path.replace(path.size() - digits.size(), digits.size(), digits);
    if ((hash(path) & lowBits) == 0) {
      paths.push_back(path);
    }
  }
  return paths;
}

Paths pathsThatCollideWithoutASeed() {
  return collidingPaths(
      [](const std::string& path) { return XXH3_64bits(path.data(), path.size()); });
}

Paths pathsThatCollideInTheStandardLibrary() { return collidingPaths(std::hash<std::string>()); }

/// Keeps the paths contiguous, as in a file, so that only their content makes a difference.
class PackedPaths {
 public:
  explicit PackedPaths(const Paths& paths) {
    for (const std::string& path : paths) {
      bytes_ += path;
    }
    for (std::size_t begin = 0; const std::string& path : paths) {
      views_.push_back(std::string_view(bytes_).substr(begin, path.size()));
      begin += path.size();
    }
  }

  [[nodiscard]] const std::vector<std::string_view>& views() const { return views_; }

 private:
  std::string bytes_;
  std::vector<std::string_view> views_;
};

void insertAll(benchmark::State& state, const Paths& paths) {
  const PackedPaths packed(paths);
  for ([[maybe_unused]] auto iteration : state) {
    internal::CanonicalTextSet set;
    for (const std::string_view path : packed.views()) {
      set.insert(path);
    }
    benchmark::DoNotOptimize(set.size());
  }
  state.counters["time_per_path"] = benchmark::Counter(
      static_cast<double>(pathCount),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// The paths are made once, because they are the same for every run.
BENCHMARK_CAPTURE(insertAll, random, randomPaths());
BENCHMARK_CAPTURE(insertAll, one_length, pathsOfOneLength());
BENCHMARK_CAPTURE(insertAll, one_beginning, pathsWithOneBeginning());
BENCHMARK_CAPTURE(insertAll, colliding_unseeded, pathsThatCollideWithoutASeed());
BENCHMARK_CAPTURE(insertAll, colliding_standard, pathsThatCollideInTheStandardLibrary());

}  // namespace
}  // namespace velmora

BENCHMARK_MAIN();
