// Signals to other processes of the same user.
#pragma once

#include <string_view>

namespace velmora {

class NotificationCenter {
 public:
  virtual ~NotificationCenter() = default;

  /// Posts a notification that carries nothing but its name, for immediate delivery. Never fails
  /// outward: a lost notification is the platform's to bear. Main thread only.
  virtual void post(std::string_view name) noexcept = 0;
};

}  // namespace velmora
