// Which of the two actions this program performs.
#pragma once

#include "platform/ActionKind.h"

#include <string_view>

namespace velmora {

class ExtensionBundle;

/// The bundle identifier that makes the program perform Restore.
inline constexpr std::string_view restoreActionIdentifier =
    "io.tolvane.Velmora.FinderRestoreAction";

/// Whether the program performs Restore: only under restoreActionIdentifier. It performs Warp under
/// any other identifier or without one. The answer is never stored; each caller asks again.
[[nodiscard]] bool isRestoreAction(const ExtensionBundle& bundle);

[[nodiscard]] ActionKind actionKind(const ExtensionBundle& bundle);

}  // namespace velmora
