// UUIDs from the system's random number source.
#pragma once

#include "platform/IdentifierSource.h"

namespace velmora {

class RandomIdentifierSource final : public IdentifierSource {
 public:
  std::string uuid() override;
};

}  // namespace velmora
