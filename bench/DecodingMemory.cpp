// decoding_memory CANDIDATE FILE
//
// Prints how much memory the candidate needs at its peak to read and decode the manifest, as a
// multiple of the file's size. Counted is the process's resident memory, the file's bytes included,
// above what it was before the file was read. One process measures one candidate once: the peak
// never sinks again.
#include "bench/Candidates.h"
#include "bench/ManifestFiles.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <limits>
#include <stdexcept>

namespace velmora {
namespace {

// Not from getrusage, whose peak begins with that of the process that started this one.
double statusBytes(const std::string& field) {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word) {
    double kibibytes = 0;
    if (word == field && status >> kibibytes) {
      return kibibytes * 1024;
    }
    status.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
  }
  throw std::runtime_error("/proc/self/status does not tell " + field);
}

const Candidate& candidateNamed(std::string_view name) {
  const auto candidate = std::ranges::find(decodingCandidates(), name, &Candidate::name);
  if (candidate == decodingCandidates().end()) {
    throw std::invalid_argument("there is no candidate " + std::string(name));
  }
  return *candidate;
}

double peakOverSize(std::string_view candidate, const std::filesystem::path& path) {
  const Decode decode = candidateNamed(candidate).makeDecode();
  const double before = statusBytes("VmRSS:");
  std::string bytes = readManifestBytes(path);
  decode(bytes);
  return (statusBytes("VmHWM:") - before) / static_cast<double>(std::filesystem::file_size(path));
}

}  // namespace
}  // namespace velmora

int main(int argumentCount, char** arguments) {
  try {
    if (argumentCount != 3) {
      throw std::invalid_argument("wants the name of a candidate and a file");
    }
    std::cout << velmora::peakOverSize(arguments[1], arguments[2]) << '\n';
  } catch (const std::exception& error) {
    std::cerr << "decoding_memory: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
