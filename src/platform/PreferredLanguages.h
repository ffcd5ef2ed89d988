// The languages that the user of the system prefers.
#pragma once

#include "text/Text.h"

#include <vector>

namespace velmora {

/// Calls may come from any thread.
class PreferredLanguages {
 public:
  virtual ~PreferredLanguages() = default;

  /// The language tags in the platform's spelling, most preferred first, read afresh. May be empty.
  virtual std::vector<Text> preferredLanguages() const = 0;
};

}  // namespace velmora
