// The helper processes with which the program under test talks: participants of its bus, and the
// application that it launches.
#pragma once

#include "tests/support/Records.h"
#include "tests/process/ScratchHome.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::process {

/// How a D-Bus receiver of the application asks for the handoff signal.
inline constexpr const char* handoffRule =
    "type='signal',interface='io.tolvane.Velmora',member='finderHandoff',"
    "path='/io/tolvane/Velmora'";

/// A participant of a bus, ready when constructed. The options are those of the helper program.
class Peer {
 public:
  Peer(const std::string& busAddress, const std::vector<std::string>& options);
  /// Waits for one that the bus starts and that reports to `listener`.
  explicit Peer(const Listener& listener);
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  ~Peer();

  /// Everything that has reached this peer since the last time, up to the moment at which
  /// `process` had left the bus. Nothing that it sent can follow.
  std::vector<Record> recordsUntilGone(pid_t process);

 private:
  /// What has come before it was ready: a call that made the bus start it, for one.
  std::vector<Record> recordsUntil(std::string_view answer);

  /// None when the bus has started it.
  std::optional<pid_t> process_;
  Channel channel_;
  std::vector<Record> early_;
};

/// The running application that a launcher has started; it ends with its owner.
class LaunchedApplication {
 public:
  /// Waits for an application that reports to `listener`.
  explicit LaunchedApplication(const Listener& listener);
  LaunchedApplication(const LaunchedApplication&) = delete;
  LaunchedApplication& operator=(const LaunchedApplication&) = delete;
  ~LaunchedApplication();

  std::vector<std::string> arguments() const { return record_.values("argument"); }
  std::string directory() const { return record_.value("directory"); }
  pid_t process() const;
  bool hasVariable(const std::string& assignment) const;
  bool hasVariableNamed(const std::string& name) const;

 private:
  /// Emptied to let the application end.
  std::vector<Channel> channel_;
  Record record_;
};

/// The command of a desktop entry or service file that starts the helper program.
std::string helperCommand(const std::vector<std::string>& arguments);

}  // namespace velmora::process
