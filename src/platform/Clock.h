// The time of day.
#pragma once

#include <chrono>

namespace velmora {

class Clock {
 public:
  virtual ~Clock() = default;

  virtual std::chrono::system_clock::time_point now() const = 0;
};

}  // namespace velmora
