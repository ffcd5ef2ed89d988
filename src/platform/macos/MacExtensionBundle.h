// The bundle that the system has started, and its localization folders.
#pragma once

#include "platform/ExtensionBundle.h"

namespace velmora {

/// Asks the main bundle at every call.
class MacExtensionBundle final : public ExtensionBundle {
 public:
  std::optional<Text> bundleIdentifier() const override;
  std::unique_ptr<LocalizationFolder> localizationFolder(std::string_view language) const override;
};

}  // namespace velmora
