#include "extension/ActionKind.h"

#include "platform/ExtensionBundle.h"

#include <optional>

namespace velmora {

bool isRestoreAction(const ExtensionBundle& bundle) {
  const std::optional<Text> identifier = bundle.bundleIdentifier();
  return identifier.has_value() && canonicallyEqual(*identifier, restoreActionIdentifier);
}

}  // namespace velmora
