// Finds and opens applications through the shared workspace.
#pragma once

#include "platform/Workspace.h"

namespace velmora {

/// The location of an application is its absolute URL.
class MacWorkspace final : public Workspace {
 public:
  std::optional<Text> applicationLocation(std::string_view bundleIdentifier) noexcept override;
  void openApplication(const Text& location, OpenConfiguration configuration) noexcept override;
};

}  // namespace velmora
