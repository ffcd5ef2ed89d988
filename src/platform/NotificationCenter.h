// Notifications to other processes of the same user.
#pragma once

#include <string_view>

namespace velmora {

class NotificationCenter {
 public:
  virtual ~NotificationCenter() = default;

  /// Posts a notification that consists of its name, for immediate delivery. A failure is not
  /// reported, and the notification is lost. Main thread only.
  virtual void post(std::string_view name) noexcept = 0;
};

}  // namespace velmora
