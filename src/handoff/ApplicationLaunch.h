// Starts the application, so that it acts on a request.
#pragma once

#include <string_view>

namespace velmora {

class Workspace;

/// The bundle identifier of the application.
inline constexpr std::string_view mainApplicationIdentifier = "io.tolvane.Velmora";

/// Asks the system to start the application or to bring it to the front, without adding it to the
/// recent items. Does not wait for the application. Never fails, and reports nothing when the
/// application is not installed or does not start: the request waits for its next start. Main
/// thread only.
void openMainApplication(Workspace& workspace) noexcept;

}  // namespace velmora
