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

/// Main thread only. Failures are not reported.
class Workspace {
 public:
  virtual ~Workspace() = default;

  /// The location of the application with this bundle identifier, in a form that the platform
  /// chooses; none when the platform knows no such application.
  virtual std::optional<Text> applicationLocation(std::string_view bundleIdentifier) noexcept = 0;

  /// Asks the platform to open the application at `location`, and does not wait for the
  /// application. A running instance is activated instead of started again.
  virtual void openApplication(const Text& location, OpenConfiguration configuration) noexcept = 0;
};

}  // namespace velmora
