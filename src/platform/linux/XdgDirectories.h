// The user's directories according to the XDG Base Directory Specification.
//
// GLib's functions are not used: they cache their answers at the first use, and never answer
// "none".
#pragma once

#include "platform/posix/PasswordDatabase.h"

#include <functional>
#include <optional>
#include <string>

namespace velmora {

class Environment;

/// Looks up the home directory when the environment names none.
using HomeLookup = std::function<std::optional<std::string>()>;

/// The directory for the data of the user's applications: $XDG_DATA_HOME, or ".local/share" in the
/// home directory. None when neither is an absolute path. The directory need not exist.
[[nodiscard]] std::optional<std::string> xdgDataHome(
    const Environment& environment, const HomeLookup& homeLookup = passwordEntryHome);

/// The same for settings: $XDG_CONFIG_HOME or ".config" in the home directory.
[[nodiscard]] std::optional<std::string> xdgConfigHome(
    const Environment& environment, const HomeLookup& homeLookup = passwordEntryHome);

}  // namespace velmora
