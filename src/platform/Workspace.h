// The desktop's applications.
#pragma once

#include "text/Text.h"

#include <optional>
#include <string_view>

namespace velmora {

/// How an application is opened.
struct OpenConfiguration {
  bool activates = false;
  bool addsToRecentItems = false;

  bool operator==(const OpenConfiguration&) const = default;
};

/// Main thread only. Nothing fails outward.
class Workspace {
 public:
  virtual ~Workspace() = default;

  /// Where the application with this bundle identifier is installed, in the platform's own terms;
  /// none when it knows no such application.
  virtual std::optional<Text> applicationLocation(std::string_view bundleIdentifier) noexcept = 0;

  /// Asks for the application at `location` to be opened and returns without waiting for it; an
  /// instance that runs is activated rather than started again.
  virtual void openApplication(const Text& location, OpenConfiguration configuration) noexcept = 0;
};

}  // namespace velmora
