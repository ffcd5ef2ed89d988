// Finds the desktop entry of an application by the XDG Desktop Entry Specification.
//
// GIO's functions for desktop entries are not used. Each of them, even the one for a key file in
// memory, first reads other files in all data directories. It waits for ever on a named pipe there,
// and accepts relative directories.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class FileReader;

/// A usable entry. It was read once, so a later change of its file has no effect.
struct DesktopEntry {
  std::string path;
  /// The bus name of an application with D-Bus activation.
  std::optional<std::string> busName;
  /// The program and its arguments, for a start without files; empty when there is no command.
  std::vector<std::string> command;
  /// The working directory of the command; empty when there is none.
  std::string workingDirectory;
};

/// The entry of the application `identifier`. It is the first usable one of
/// `applications/<identifier>.desktop` and the same path with a slash for each dot of the
/// identifier, in each of `dataDirectories` in turn.
///
/// An entry is usable if it is a regular file and a key file, describes an application, and its
/// programs exist (TryExec, Exec). Others are passed over. A key file with Hidden=true ends the
/// search without a result, because the user has deleted the application.
///
/// Throws PlatformError when GLib cannot be loaded.
[[nodiscard]] std::optional<DesktopEntry> findDesktopEntry(
    std::string_view identifier, const std::vector<std::string>& dataDirectories,
    const FileReader& fileReader);

}  // namespace velmora
