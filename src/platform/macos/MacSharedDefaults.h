// Settings in a defaults suite.
#pragma once

#include "platform/SharedDefaults.h"

namespace velmora {

/// Opens the suite at every call. A stored number is returned as its text.
class MacSharedDefaults final : public SharedDefaults {
 public:
  std::optional<Text> string(std::string_view suiteName, std::string_view key) const override;
};

}  // namespace velmora
