// The four messages for the user, and the errors that carry them.
#pragma once

#include "localization/VelmoraLanguage.h"
#include "platform/ActionKind.h"
#include "platform/ExtensionContext.h"

#include <string>
#include <string_view>

namespace velmora {

class ExtensionBundle;
struct Platform;

/// The domain and codes of the errors that cancel requests.
inline constexpr std::string_view finderActionErrorDomain = "io.tolvane.Velmora.FinderAction";
inline constexpr int unsuitableSelectionErrorCode = 1;
inline constexpr int failedHandoffErrorCode = 2;

/// The message under `key` in the table of `language`. Returns `englishText` when the resources
/// have no such folder, table or key; the English table is not tried. Throws only when memory runs
/// out.
[[nodiscard]] std::string localizedMessage(std::string_view key, std::string_view englishText,
                                           VelmoraLanguage language, const ExtensionBundle& bundle);

/// The error for a selection that the action cannot be applied to. The language and the message are
/// looked up afresh. Throws only when memory runs out.
[[nodiscard]] RequestError makeSelectionError(ActionKind action, const Platform& platform);

/// The error for a failed handoff to the application, made like that of makeSelectionError.
[[nodiscard]] RequestError makeHandoffError(ActionKind action, const Platform& platform);

}  // namespace velmora
