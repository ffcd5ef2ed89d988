#include "extension/VelmoraFinderActionExtension.h"

#include "extension/RequestFlow.h"

namespace velmora {

void VelmoraFinderActionExtension::beginRequestWithExtensionContext(
    const std::shared_ptr<ExtensionContext>& context) const noexcept {
  beginRequest(context, platform_);
}

}  // namespace velmora
