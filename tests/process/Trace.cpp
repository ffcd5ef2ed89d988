#include "tests/process/Trace.h"

#include "tests/process/ScratchHome.h"

#include <map>
#include <sstream>

namespace velmora::process {

namespace {

/// The lines of the main thread, without the thread's number.
std::vector<std::string> linesOfMainThread(const std::filesystem::path& trace) {
  std::istringstream lines(readFile(trace));
  std::vector<std::string> result;
  std::string mainThread;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t end = line.find(' ');
    const std::string thread = line.substr(0, end);
    if (mainThread.empty()) {
      mainThread = thread;
    }
    if (thread == mainThread && end != std::string::npos) {
      result.push_back(line.substr(line.find_first_not_of(' ', end)));
    }
  }
  return result;
}

bool beginsCall(const std::string& line) { return line.front() >= 'a' && line.front() <= 'z'; }

}  // namespace

std::vector<std::string> tracingCommand(const std::filesystem::path& trace,
                                        const std::string& calls,
                                        const std::vector<std::string>& injections) {
  std::vector<std::string> result = {"strace",          "-f", "-qq", "-y", "-o", trace.string(),
                                     "--trace=" + calls};
  for (const std::string& injection : injections) {
    result.push_back("--inject=" + injection);
  }
  return result;
}

std::vector<TracedCall> callsIn(const std::filesystem::path& trace) {
  std::map<std::string, int> occurrences;
  std::vector<TracedCall> result;
  for (const std::string& line : linesOfMainThread(trace)) {
    if (beginsCall(line)) {
      const std::string name = line.substr(0, line.find('('));
      result.push_back({.name = name, .occurrence = ++occurrences[name], .text = line});
    }
  }
  return result;
}

int injectedFaults(const std::filesystem::path& trace) {
  int result = 0;
  for (const std::string& line : linesOfMainThread(trace)) {
    result += line.ends_with("(INJECTED)") ? 1 : 0;
  }
  return result;
}

}  // namespace velmora::process
