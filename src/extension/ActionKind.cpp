#include "extension/ActionKind.h"

#include "platform/ExtensionBundle.h"

#include <optional>

namespace velmora {

bool isRestoreAction(const ExtensionBundle& bundle) {
  const std::optional<Text> identifier = bundle.bundleIdentifier();
  return identifier.has_value() && canonicallyEqual(*identifier, restoreActionIdentifier);
}

ActionKind actionKind(const ExtensionBundle& bundle) {
  return isRestoreAction(bundle) ? ActionKind::restore : ActionKind::warp;
}

}  // namespace velmora
