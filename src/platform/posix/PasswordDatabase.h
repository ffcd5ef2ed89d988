// Home directories in the system's user database.
#pragma once

#include <optional>
#include <string>

namespace velmora {

/// The absolute home directory in the password entry of the user who runs this process, if any.
[[nodiscard]] std::optional<std::string> passwordEntryHome();

/// The same for the user with this name.
[[nodiscard]] std::optional<std::string> passwordEntryHomeOf(const std::string& userName);

}  // namespace velmora
