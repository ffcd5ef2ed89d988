// The authentication that a D-Bus connection begins with (D-Bus Specification, "Authentication
// Protocol").
//
// GIO's own is not used: it reads a line of any length into memory.
#pragma once

namespace velmora {

class BusSocket;

/// Authenticates as the user of this process, whom the kernel has told to the bus (EXTERNAL).
/// Returns false when the bus refuses that or does not follow the protocol. After a success, the
/// connection carries messages.
[[nodiscard]] bool authenticate(BusSocket& socket);

}  // namespace velmora
