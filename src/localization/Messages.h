// The four messages that the user may get to see, and the errors that carry them.
#pragma once

#include "localization/VelmoraLanguage.h"
#include "platform/ExtensionContext.h"

#include <string>
#include <string_view>

namespace velmora {

class ExtensionBundle;
struct Platform;

/// The domain and codes of the errors with which requests are cancelled.
inline constexpr std::string_view finderActionErrorDomain = "io.tolvane.Velmora.FinderAction";
inline constexpr int unsuitableSelectionErrorCode = 1;
inline constexpr int failedHandoffErrorCode = 2;

/// The message stored under `key` in the table of `language`; `englishText` when the resources
/// have no such folder, table or key. There is no second attempt with the English table. Throws
/// only when memory runs out.
[[nodiscard]] std::string localizedMessage(std::string_view key, std::string_view englishText,
                                           VelmoraLanguage language, const ExtensionBundle& bundle);

/// The error for a selection to which the action cannot be applied. The language and the message
/// are looked up afresh. Throws only when memory runs out.
[[nodiscard]] RequestError makeSelectionError(bool isRestore, const Platform& platform);

/// The error for a handoff to the application that failed. As makeSelectionError.
[[nodiscard]] RequestError makeHandoffError(bool isRestore, const Platform& platform);

}  // namespace velmora
