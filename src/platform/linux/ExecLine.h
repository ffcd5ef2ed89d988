// The command in the Exec line of a desktop entry (XDG Desktop Entry Specification).
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The values of the field codes that a start without files has.
struct FieldCodes {
  /// %i, which becomes `--icon <icon>`; nothing for an empty icon.
  std::string icon;
  /// %c.
  std::string name;
  /// %k: the path of the entry.
  std::string path;
};

/// The program and its arguments. "%%" becomes "%". All other field codes become nothing, and an
/// argument that consists of them is left out. None when the line is empty, or its quotes are not
/// closed. Throws PlatformError when GLib cannot be loaded.
[[nodiscard]] std::optional<std::vector<std::string>> parseExecLine(const std::string& line,
                                                                    const FieldCodes& codes);

}  // namespace velmora
