#include "handoff/ApplicationLaunch.h"

#include "platform/Workspace.h"

#include <optional>

namespace velmora {

void openMainApplication(Workspace& workspace) noexcept {
  if (const std::optional<Text> location =
          workspace.applicationLocation(mainApplicationIdentifier)) {
    workspace.openApplication(*location, {.activates = true, .addsToRecentItems = false});
  }
}

}  // namespace velmora
