// A notification on the user's desktop, for messages that a file manager does not show.
#pragma once

#include <string_view>

namespace velmora {

class SessionBus;

/// Shows the plain text `summary` in the name of Velmora. Waits until the desktop has accepted it,
/// within the time limit of `bus`. Has no effect without a desktop.
void notifyDesktop(SessionBus& bus, std::string_view summary) noexcept;

}  // namespace velmora
