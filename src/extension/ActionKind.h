// Which of the two actions this program performs.
#pragma once

#include <string_view>

namespace velmora {

class ExtensionBundle;

/// The bundle identifier that makes the program perform Restore.
inline constexpr std::string_view restoreActionIdentifier =
    "io.tolvane.Velmora.FinderRestoreAction";

/// The action kind: true for Restore, false for Warp. The program performs Restore only under
/// restoreActionIdentifier, and Warp under any other identifier or without one. The kind is never
/// stored; each caller asks again.
[[nodiscard]] bool isRestoreAction(const ExtensionBundle& bundle);

}  // namespace velmora
