// The desktop's applications, by their desktop entries.
#pragma once

#include "platform/Workspace.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/linux/SessionBus.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

class Environment;
class FileReader;

/// The location of an application is the path of its desktop entry. The entry is read only when the
/// application is looked up, so that a later change of the file has no effect. Other locations open
/// nothing.
///
/// A running application with D-Bus activation is activated over the bus. Otherwise the entry's
/// command is run, separated from this program's terminal and pipes. The bus starts an application
/// only if its command is missing or cannot be run. The launcher's tokens for bringing a window to
/// the front are passed on, in the call or in the command's environment.
///
/// Looking up an application does not connect to the bus.
class LinuxWorkspace final : public Workspace {
 public:
  /// All arguments are kept by reference.
  LinuxWorkspace(SessionBus& bus, const Environment& environment, const FileReader& fileReader);

  std::optional<Text> applicationLocation(std::string_view bundleIdentifier) noexcept override;
  void openApplication(const Text& location, OpenConfiguration configuration) noexcept override;

  /// Waits, within the time limit of the bus, until an application that the bus starts has answered
  /// the call: the bus drops the calls of a process that has ended. To be called when all other
  /// work is done.
  void finishPendingActivation() noexcept;

 private:
  void open(const Text& location, OpenConfiguration configuration);

  SessionBus& bus_;
  const Environment& environment_;
  const FileReader& fileReader_;
  /// The entries of the applications that were looked up, by their locations.
  std::map<std::string, DesktopEntry, std::less<>> found_;
  std::optional<PendingCall> pendingActivation_;
};

}  // namespace velmora
