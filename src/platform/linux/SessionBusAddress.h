// Where the user's session bus listens.
#pragma once

#include <optional>
#include <string>

namespace velmora {

class Environment;

/// $DBUS_SESSION_BUS_ADDRESS, else the socket "bus" in $XDG_RUNTIME_DIR when there is one, else
/// none. Never an address that would start a bus of its own, which nobody would listen to.
[[nodiscard]] std::optional<std::string> sessionBusAddress(const Environment& environment);

}  // namespace velmora
