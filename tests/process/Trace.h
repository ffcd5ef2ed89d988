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
  /// The how-manieth call of that name in that thread it is, from 1.
  int occurrence = 0;
  /// The line that tells of it, with the paths of its descriptors.
  std::string text;
};

/// The command that runs a program with `calls`, a list in strace's words, written to `trace`, and
/// with `injections`, each also in strace's words. The program's own words follow it.
std::vector<std::string> tracingCommand(const std::filesystem::path& trace,
                                        const std::string& calls,
                                        const std::vector<std::string>& injections);

/// The calls of the main thread, the first call's.
std::vector<TracedCall> callsIn(const std::filesystem::path& trace);

/// How many calls of the main thread failed because a fault was put into them.
int injectedFaults(const std::filesystem::path& trace);

}  // namespace velmora::process
