// The directories that applications share.
#pragma once

#include "text/Text.h"

#include <optional>
#include <string_view>
#include <vector>

namespace velmora {

/// Asks the platform afresh at every call. Creates and checks directories only as far as the answer
/// requires. Calls may come from any thread. All paths are absolute.
class SharedLocations {
 public:
  virtual ~SharedLocations() = default;

  /// The container of an application group; none when this program does not belong to it.
  virtual std::optional<Text> groupContainer(std::string_view groupIdentifier) const = 0;

  /// The user's directories for the data of applications, best first. May be empty.
  virtual std::vector<Text> applicationSupportDirectories() const = 0;
};

}  // namespace velmora
