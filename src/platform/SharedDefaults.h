// Settings that applications of one group share.
#pragma once

#include "text/Text.h"

#include <optional>
#include <string_view>

namespace velmora {

/// Calls may come from any thread.
class SharedDefaults {
 public:
  virtual ~SharedDefaults() = default;

  /// The string stored under `key` in the suite, read afresh. None when the suite cannot be
  /// opened or holds no such string.
  virtual std::optional<Text> string(std::string_view suiteName, std::string_view key) const = 0;
};

}  // namespace velmora
