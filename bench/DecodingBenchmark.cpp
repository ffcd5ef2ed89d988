// decoding_benchmark [--benchmark_…] DIRECTORY...
//
// The time that each candidate takes for all manifests of each directory. One iteration decodes
// every file of the directory once; the bytes are copied afresh before it, outside of the measured
// time, since some candidates overwrite them.
#include "bench/Candidates.h"
#include "bench/ManifestFiles.h"

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <chrono>
#include <exception>
#include <iostream>
#include <memory>

namespace velmora {
namespace {

std::string simdjsonVersion() {
  return std::to_string(simdjson::SIMDJSON_VERSION_MAJOR) + "." +
         std::to_string(simdjson::SIMDJSON_VERSION_MINOR) + "." +
         std::to_string(simdjson::SIMDJSON_VERSION_REVISION);
}

std::size_t decodeAll(const Decode& decode, std::vector<std::string>& files) {
  std::size_t entryCount = 0;
  for (std::string& bytes : files) {
    entryCount += decode(bytes);
  }
  return entryCount;
}

void measure(benchmark::State& state, ManifestSet& manifests, const Candidate& candidate) {
  const Decode decode = candidate.makeDecode();
  // Warms up: the memory that a candidate keeps is not new to it afterwards.
  const std::size_t entryCount = decodeAll(decode, manifests.freshCopies());
  while (state.KeepRunning()) {
    std::vector<std::string>& files = manifests.freshCopies();
    const auto start = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(decodeAll(decode, files));
    const auto end = std::chrono::steady_clock::now();
    state.SetIterationTime(std::chrono::duration<double>(end - start).count());
  }
  state.counters["entries"] = static_cast<double>(entryCount);
  state.counters["time_per_entry"] = benchmark::Counter(
      static_cast<double>(entryCount),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(manifests.byteCount()));
}

void registerCandidates(const std::filesystem::path& directory) {
  const auto manifests = std::make_shared<ManifestSet>(directory);
  for (const Candidate& candidate : decodingCandidates()) {
    const std::string name = manifests->name() + "/" + std::string(candidate.name);
    benchmark::RegisterBenchmark(
        name.c_str(),
        [manifests, candidate](benchmark::State& state) { measure(state, *manifests, candidate); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
  }
}

void run(int argumentCount, char** arguments) {
  // Leaves what it does not know.
  benchmark::Initialize(&argumentCount, arguments);
  benchmark::AddCustomContext("compiler", VELMORA_COMPILER);
  benchmark::AddCustomContext("simdjson", simdjsonVersion());
  benchmark::AddCustomContext("simdjson_kernel", simdjson::get_active_implementation()->name());
  for (const char* directory :
       std::span(arguments, static_cast<std::size_t>(argumentCount)).subspan(1)) {
    registerCandidates(directory);
  }
  benchmark::RunSpecifiedBenchmarks();
}

}  // namespace
}  // namespace velmora

int main(int argumentCount, char** arguments) {
  try {
    velmora::run(argumentCount, arguments);
  } catch (const std::exception& error) {
    std::cerr << "decoding_benchmark: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
