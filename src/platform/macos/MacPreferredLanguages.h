// The languages of the system's settings.
#pragma once

#include "platform/PreferredLanguages.h"

namespace velmora {

class MacPreferredLanguages final : public PreferredLanguages {
 public:
  std::vector<Text> preferredLanguages() const override;
};

}  // namespace velmora
