// decoding_memory CANDIDATE FILE
//
// Prints how many bytes of memory the candidate needs at its peak to read and decode the manifest,
// and its result. The memory is the growth of the resident memory since before the file was read,
// with the content of the file. One process measures one candidate, because a process's peak never
// decreases.
#include "bench/Candidates.h"
#include "bench/ManifestFiles.h"

#include <cstddef>
#include <exception>
#include <fstream>
#include <iostream>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

namespace velmora {
namespace {

// The peak of getrusage begins with that of the parent process, so this reads /proc.
std::size_t statusBytes(const std::string& field) {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word) {
    std::size_t kibibytes = 0;
    if (word == field && status >> kibibytes) {
      return kibibytes * 1024;
    }
    status.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
  }
  throw std::runtime_error("/proc/self/status does not tell " + field);
}

ReadAndDecode reading(std::string_view name) {
  const Candidate candidate = candidateNamed(name);
  if (const auto* const read = std::get_if<ReadAndDecode>(&candidate)) {
    return *read;
  }
  return [decode = std::get<Decode>(candidate)](const Text& path) {
    std::string bytes = readManifestBytes(path.utf8());
    return decode(bytes);
  };
}

void printPeak(std::string_view candidate, const Text& path) {
  const ReadAndDecode decode = reading(candidate);
  const std::size_t before = statusBytes("VmRSS:");
  const std::size_t counted = decode(path);
  std::cout << statusBytes("VmHWM:") - before << ' ' << counted << '\n';
}

}  // namespace
}  // namespace velmora

int main(int argumentCount, char** arguments) {
  try {
    if (argumentCount != 3) {
      throw std::invalid_argument("wants the name of a candidate and a file");
    }
    velmora::printPeak(arguments[1], arguments[2]);
  } catch (const std::exception& error) {
    std::cerr << "decoding_memory: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
