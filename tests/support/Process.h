// Other programs, which tests start as a file manager does and wait for.
//
// A program gets exactly the given environment. Only the test runner limits its time.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <sys/types.h>

#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace velmora::process {

using Environment = std::map<std::string, std::string>;

/// The variables of the test's own environment that every child gets. A program needs them to be
/// found, and with sanitizers to report as the test run wants.
Environment inheritedEnvironment();

/// The same for helpers, which are not tested. A helper must not end because of races that
/// ThreadSanitizer sees in libraries not compiled for it, or because of leaks.
Environment helperEnvironment();

enum class StandardError {
  pipe,
  terminal,
  /// A full pipe that nobody reads.
  stuckPipe,
};

enum class StandardOutput {
  pipe,
  terminal,
  /// A pipe whose reader has closed it.
  brokenPipe,
};

struct Command {
  /// The program first. A program without a slash is searched for on the path.
  std::vector<std::string> arguments;
  Environment environment;
  /// Written to a pipe. Without it, standard input is empty.
  std::optional<std::string> input;
  std::string workingDirectory = "/";
  StandardError standardError = StandardError::pipe;
  StandardOutput standardOutput = StandardOutput::pipe;
};

/// The end of a program, and its output.
struct Outcome {
  pid_t process = 0;
  /// std::nullopt when a signal ended the program.
  std::optional<int> exitStatus;
  int signal = 0;
  std::string output;
  std::string error;
  /// In kilobytes. At least the size of the test when it started the program.
  long peakMemory = 0;
  /// At its end, no other process had its output or errors open, such as a program that it started.
  bool released = false;
};

/// Runs a program to its end. Throws std::system_error when the start fails. May be called on
/// several threads.
Outcome run(const Command& command);

/// A pair of connected sockets.
std::array<FileDescriptor, 2> makeSocketPair();

/// Starts a program with `socket` as its standard input and output. Its errors go to a file, or
/// without one to the test's own errors.
pid_t start(const Command& command, const FileDescriptor& socket,
            const std::filesystem::path& errorFile = {});

/// Waits for the end of a child. Returns the status of waitpid().
int awaitEnd(pid_t child);

/// A helper that runs beside the test and ends with its owner. It also ends with a test that is
/// killed.
class HelperProcess {
 public:
  /// Starts the helper like start(), with helperEnvironment().
  HelperProcess(std::vector<std::string> arguments, const FileDescriptor& socket,
                const std::filesystem::path& errorFile = {});
  HelperProcess(const HelperProcess&) = delete;
  HelperProcess& operator=(const HelperProcess&) = delete;
  ~HelperProcess() { end(); }

  void signal(int number) const;
  /// Kills the helper and waits for its end.
  void end();

 private:
  pid_t process_;
};

/// From now on, orphaned descendants become children of this process.
void adoptOrphans();

/// The children of this process, also ended ones that nobody has waited for.
std::set<pid_t> children();

}  // namespace velmora::process
