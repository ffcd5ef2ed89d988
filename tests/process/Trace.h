// The system calls of a program, as strace tells them, and faults put into them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::process {

/// A call of a program's main thread.
struct TracedCall {
  std::string name;
  /// Counts the calls of that name in that thread, from 1.
  int occurrence = 0;
  /// The line that tells of it, with the paths of its descriptors.
  std::string text;
};

/// The command that runs a program with `injections` and writes its `calls` to `trace`, both in
/// strace's syntax. The program and its arguments come after it.
std::vector<std::string> tracingCommand(const std::filesystem::path& trace,
                                        const std::string& calls,
                                        const std::vector<std::string>& injections);

/// The calls of the main thread, which is the thread of the first call.
std::vector<TracedCall> callsIn(const std::filesystem::path& trace);

/// How many calls of the main thread failed because a fault was put into them.
int injectedFaults(const std::filesystem::path& trace);

}  // namespace velmora::process
