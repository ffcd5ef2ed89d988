// The user's directories after the XDG Base Directory Specification.
//
// By hand, because GLib's answers are cached at first use and never "none".
#pragma once

#include "platform/posix/PasswordDatabase.h"

#include <functional>
#include <optional>
#include <string>

namespace velmora {

class Environment;

/// Looks up a home directory when the environment names none.
using HomeLookup = std::function<std::optional<std::string>()>;

/// Where the user's applications keep data: $XDG_DATA_HOME or ".local/share" in the home directory.
/// None when neither is an absolute path. It need not exist.
[[nodiscard]] std::optional<std::string> xdgDataHome(
    const Environment& environment, const HomeLookup& homeLookup = passwordEntryHome);

/// The same for settings: $XDG_CONFIG_HOME or ".config" in the home directory.
[[nodiscard]] std::optional<std::string> xdgConfigHome(
    const Environment& environment, const HomeLookup& homeLookup = passwordEntryHome);

}  // namespace velmora
