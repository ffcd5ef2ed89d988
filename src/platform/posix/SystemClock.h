// The system's time of day.
#pragma once

#include "platform/Clock.h"

namespace velmora {

class SystemClock final : public Clock {
 public:
  std::chrono::system_clock::time_point now() const override {
    return std::chrono::system_clock::now();
  }
};

}  // namespace velmora
