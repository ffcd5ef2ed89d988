// The address of the user's session bus.
#pragma once

#include <optional>
#include <string>

namespace velmora {

class Environment;

/// $DBUS_SESSION_BUS_ADDRESS, without addresses that would start a new bus: no other program would
/// listen there. If the variable is missing or empty, the socket "bus" in $XDG_RUNTIME_DIR. None
/// when there is no such address or socket.
[[nodiscard]] std::optional<std::string> sessionBusAddress(const Environment& environment);

}  // namespace velmora
