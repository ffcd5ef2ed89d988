// A notification bubble on the user's desktop, for messages that a file manager would swallow.
#pragma once

#include <string_view>

namespace velmora {

class SessionBus;

/// Shows `summary`, plain text, on behalf of Velmora. Waits until the desktop has taken it, within
/// the limit of `bus`; without a desktop nothing happens.
void notifyDesktop(SessionBus& bus, std::string_view summary) noexcept;

}  // namespace velmora
