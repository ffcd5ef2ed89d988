// Opening the application, so that it acts on a request.
#pragma once

#include <string_view>

namespace velmora {

class Workspace;

/// The bundle identifier of the application.
inline constexpr std::string_view mainApplicationIdentifier = "io.tolvane.Velmora";

/// Asks the system to start the application or bring it to the front, keeping it out of the list
/// of recent items; waits for nothing. Silent when the application is not installed or does not
/// start: the request stays in place for whenever it runs next. Never fails. Main thread only.
void openMainApplication(Workspace& workspace) noexcept;

}  // namespace velmora
