// The system log, through Foundation.
#pragma once

#include "platform/Logger.h"

namespace velmora {

class MacLogger final : public Logger {
 public:
  void log(std::string_view line) noexcept override;
};

}  // namespace velmora
