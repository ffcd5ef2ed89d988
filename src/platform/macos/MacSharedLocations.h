// The container of an application group, and Application Support.
#pragma once

#include "platform/SharedLocations.h"

namespace velmora {

/// In the sandbox, Application Support lies in the extension's own container.
class MacSharedLocations final : public SharedLocations {
 public:
  std::optional<Text> groupContainer(std::string_view groupIdentifier) const override;
  std::vector<Text> applicationSupportDirectories() const override;
};

}  // namespace velmora
