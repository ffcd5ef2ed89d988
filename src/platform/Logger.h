// The system log.
#pragma once

#include <string_view>

namespace velmora {

class Logger {
 public:
  virtual ~Logger() = default;

  /// Writes one line exactly as given; "%" has no meaning in it. A failure is not reported.
  virtual void log(std::string_view line) noexcept = 0;
};

}  // namespace velmora
