// The directories of files according to the XDG Base Directory Specification.
//
// GLib's functions are not used: they cache their answers at the first use, and never answer
// "none".
#pragma once

#include "platform/posix/PasswordDatabase.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

class Environment;

/// Looks up the home directory when the environment names none.
using HomeLookup = std::function<std::optional<std::string>()>;

/// The directory for the data of the user's applications: $XDG_DATA_HOME, or ".local/share" in the
/// home directory. None when neither is an absolute path. The directory need not exist.
[[nodiscard]] std::optional<std::string> xdgDataHome(
    const Environment& environment, const HomeLookup& homeLookup = passwordEntryHome);

/// The directories for the data of applications, best first: xdgDataHome, then those of
/// $XDG_DATA_DIRS, or /usr/local/share and /usr/share when it is unset or empty. Relative and empty
/// elements do not count. The directories need not exist.
[[nodiscard]] std::vector<std::string> xdgDataDirectories(
    const Environment& environment, const HomeLookup& homeLookup = passwordEntryHome);

/// The same as xdgDataHome for settings: $XDG_CONFIG_HOME or ".config" in the home directory.
[[nodiscard]] std::optional<std::string> xdgConfigHome(
    const Environment& environment, const HomeLookup& homeLookup = passwordEntryHome);

}  // namespace velmora
