// The desktop's applications, by their desktop entries.
#pragma once

#include "platform/Workspace.h"

#include <memory>
#include <optional>
#include <string_view>

namespace velmora {

class Environment;
class FileReader;
class PendingCall;
class SessionBus;

/// The location of an application is the path of its desktop entry.
///
/// An application that the bus can activate and that runs is activated over the bus. Otherwise the
/// entry's command is run, cut off from this program's terminal and pipes; only an application
/// without such a command is started by the bus. The tokens with which a launcher lets us bring a
/// window to the front are handed on, in the call or in the command's environment.
///
/// Does not connect to the bus to look an application up. The process must have called
/// detachSessionBusFromLibraries(): GIO would connect to the bus at every launch.
class LinuxWorkspace final : public Workspace {
 public:
  /// The references are kept.
  LinuxWorkspace(SessionBus& bus, const Environment& environment, const FileReader& fileReader);
  LinuxWorkspace(const LinuxWorkspace&) = delete;
  LinuxWorkspace& operator=(const LinuxWorkspace&) = delete;
  ~LinuxWorkspace() override;

  std::optional<Text> applicationLocation(std::string_view bundleIdentifier) noexcept override;
  void openApplication(const Text& location, OpenConfiguration configuration) noexcept override;

  /// Waits, within the limit of the bus, until an application that the bus is starting has taken
  /// the call: the bus drops the calls of a process that has ended. To be called when all else is
  /// done.
  void finishPendingActivation() noexcept;

 private:
  void open(const Text& location, OpenConfiguration configuration);

  SessionBus& bus_;
  const Environment& environment_;
  const FileReader& fileReader_;
  std::unique_ptr<PendingCall> pendingActivation_;
};

}  // namespace velmora
