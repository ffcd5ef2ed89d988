// The place of the user's session bus.
#pragma once

#include <string>
#include <vector>

namespace velmora {

class Environment;

/// The names of the local sockets at which the session bus may listen, best first: those in
/// $DBUS_SESSION_BUS_ADDRESS, or `bus` in $XDG_RUNTIME_DIR if the variable is missing or empty. A
/// name is a path, or a NUL and the rest of a name in the abstract namespace. Nobody need listen
/// there.
///
/// Addresses of other transports do not count, and neither do those that would start a new bus.
[[nodiscard]] std::vector<std::string> sessionBusSockets(const Environment& environment);

}  // namespace velmora
