// decoding_times ROUNDS [CANDIDATE DIRECTORY REPETITIONS]...
//
// Measures the time of each side. A side is a candidate that decodes all manifests of a directory
// REPETITIONS times. In each round every side has one turn, directly after the other sides, so that
// a temporary slowdown of the machine affects all sides.
//
// Prints the compiler and the version of simdjson. Then it prints the results of the candidates,
// one number for each side, and a line of nanoseconds for each round.
#include "bench/Candidates.h"
#include "bench/ManifestFiles.h"

#include <simdjson.h>

#include <chrono>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace velmora {
namespace {

struct Turn {
  std::size_t counted = 0;
  std::chrono::nanoseconds duration{};
};

using Side = std::function<Turn()>;

template <class Function, class Manifests>
Turn timed(const Function& decode, Manifests& manifests) {
  const auto start = std::chrono::steady_clock::now();
  std::size_t counted = 0;
  for (auto& manifest : manifests) {
    counted += decode(manifest);
  }
  return {.counted = counted, .duration = std::chrono::steady_clock::now() - start};
}

Side inMemory(const Decode& decode, const std::filesystem::path& directory) {
  // Some candidates overwrite their input, so each turn gets copies, made before its time begins.
  return [decode, manifests = std::make_shared<ManifestSet>(directory)] {
    return timed(decode, manifests->freshCopies());
  };
}

Side fromFiles(const ReadAndDecode& decode, const std::filesystem::path& directory) {
  std::vector<Text> paths;
  for (const std::filesystem::path& path : manifestPaths(directory)) {
    paths.emplace_back(path.string());
  }
  return [decode, paths] { return timed(decode, paths); };
}

Side sideOf(std::string_view name, const std::filesystem::path& directory) {
  const Candidate candidate = candidateNamed(name);
  const auto* const decode = std::get_if<Decode>(&candidate);
  return decode != nullptr ? inMemory(*decode, directory)
                           : fromFiles(std::get<ReadAndDecode>(candidate), directory);
}

Side repeated(const Side& side, std::size_t repetitions) {
  return [side, repetitions] {
    Turn sum = side();
    for (std::size_t repetition = 1; repetition < repetitions; ++repetition) {
      const Turn turn = side();
      if (turn.counted != sum.counted) {
        throw std::runtime_error("a candidate does not answer the same twice");
      }
      sum.duration += turn.duration;
    }
    return sum;
  };
}

std::vector<Side> sidesOf(std::span<char*> arguments) {
  std::vector<Side> sides;
  for (; arguments.size() >= 3; arguments = arguments.subspan(3)) {
    sides.push_back(repeated(sideOf(arguments[0], arguments[1]), std::stoul(arguments[2])));
  }
  return sides;
}

void measure(const std::vector<Side>& sides, std::size_t rounds) {
  std::cout << VELMORA_COMPILER << ", simdjson " << simdjson::SIMDJSON_VERSION_MAJOR << '.'
            << simdjson::SIMDJSON_VERSION_MINOR << '.' << simdjson::SIMDJSON_VERSION_REVISION
            << " with its kernel " << simdjson::get_active_implementation()->name() << '\n';
  // The warm-up brings the files into the page cache, and lets candidates allocate their working
  // memory.
  for (const Side& side : sides) {
    std::cout << side().counted << ' ';
  }
  std::cout << '\n';
  for (std::size_t round = 0; round < rounds; ++round) {
    for (const Side& side : sides) {
      std::cout << side().duration.count() << ' ';
    }
    std::cout << '\n';
  }
}

}  // namespace
}  // namespace velmora

int main(int argumentCount, char** arguments) {
  try {
    const auto sides = std::span(arguments, static_cast<std::size_t>(argumentCount)).subspan(1);
    if (sides.size() % 3 != 1) {
      throw std::invalid_argument("wants rounds, and for each side candidate, directory, number");
    }
    velmora::measure(velmora::sidesOf(sides.subspan(1)), std::stoul(sides[0]));
  } catch (const std::exception& error) {
    std::cerr << "decoding_times: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
