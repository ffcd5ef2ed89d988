// The system calls of a program as strace prints them, and injected faults.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::process {

/// A call of the program's main thread.
struct TracedCall {
  std::string name;
  /// The number of this call among the main thread's calls of this name, from 1.
  int occurrence = 0;
  /// The line of the trace, with the paths of its descriptors.
  std::string text;
};

/// The command that traces a program's `calls` into `trace` and applies `injections`, both in
/// strace's syntax. The program and its arguments follow the command.
std::vector<std::string> tracingCommand(const std::filesystem::path& trace,
                                        const std::string& calls,
                                        const std::vector<std::string>& injections);

/// The calls of the main thread, which is the thread of the first call.
std::vector<TracedCall> callsIn(const std::filesystem::path& trace);

/// The number of the main thread's calls that an injected fault made fail.
int injectedFaults(const std::filesystem::path& trace);

}  // namespace velmora::process
