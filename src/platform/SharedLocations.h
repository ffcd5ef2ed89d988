// Where the platform keeps what applications share.
#pragma once

#include "text/Text.h"

#include <optional>
#include <string_view>
#include <vector>

namespace velmora {

/// Asks the platform afresh at every call; neither makes nor checks a directory beyond what it
/// takes to answer. Calls may come from any thread. All paths are absolute.
class SharedLocations {
 public:
  virtual ~SharedLocations() = default;

  /// The container of an application group, or none when this program has no part in it.
  virtual std::optional<Text> groupContainer(std::string_view groupIdentifier) const = 0;

  /// The user's directories for the data of applications, best first; may be empty.
  virtual std::vector<Text> applicationSupportDirectories() const = 0;
};

}  // namespace velmora
