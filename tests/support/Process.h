// Other programs, started by the tests as a file manager starts them and watched to their end.
//
// A program gets exactly the environment that it is given. Nothing here limits how long it may
// take: the test runner's own limit does.
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

/// What a program needs to be found and, built with sanitizers, to report as the test run wants:
/// the few variables of the test's own environment that every child gets.
Environment inheritedEnvironment();

/// The same for helpers. They are not what is tested: races that ThreadSanitizer sees in libraries
/// that it has not compiled, and what a helper leaves allocated, must not end them.
Environment helperEnvironment();

enum class StandardError { pipe, terminal };

enum class StandardOutput {
  pipe,
  terminal,
  /// A pipe that its reader has closed.
  brokenPipe,
};

struct Command {
  /// The program first. Without a slash it is looked up on the path.
  std::vector<std::string> arguments;
  Environment environment;
  /// Written to a pipe; without it, standard input is empty.
  std::optional<std::string> input;
  std::string workingDirectory = "/";
  StandardError standardError = StandardError::pipe;
  StandardOutput standardOutput = StandardOutput::pipe;
};

/// How a program ended.
struct Outcome {
  pid_t process = 0;
  /// None when a signal ended it.
  std::optional<int> exitStatus;
  int signal = 0;
  std::string output;
  std::string error;
  /// At its end nobody else, such as a program that it started, had its output or errors open.
  bool released = false;
};

/// Runs a program to its end. Throws std::system_error when it cannot be started. May be called on
/// several threads.
Outcome run(const Command& command);

/// Two sockets, each the other's end.
std::array<FileDescriptor, 2> makeSocketPair();

/// Starts a program with `socket` as its standard input and output. Its errors go to a file, or
/// without one to where the test's own go.
pid_t start(const Command& command, const FileDescriptor& socket,
            const std::filesystem::path& errorFile = {});

/// Waits for the end of a child. Returns its status as waitpid() tells it.
int awaitEnd(pid_t child);

/// A helper that runs beside the test, at the longest as long as its owner; a test that is killed
/// takes it along.
class HelperProcess {
 public:
  /// Starts it as start() does, in the environment of helpers.
  HelperProcess(std::vector<std::string> arguments, const FileDescriptor& socket,
                const std::filesystem::path& errorFile = {});
  HelperProcess(const HelperProcess&) = delete;
  HelperProcess& operator=(const HelperProcess&) = delete;
  ~HelperProcess() { end(); }

  void signal(int number) const;
  /// Kills it and waits until it is gone.
  void end();

 private:
  pid_t process_;
};

/// From here on, programs whose parent has ended become children of this process.
void adoptOrphans();

/// The children of this process, ended ones that nobody has waited for included.
std::set<pid_t> children();

}  // namespace velmora::process
