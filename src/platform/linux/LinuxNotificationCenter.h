// Notifications to other processes as signals on the session bus.
#pragma once

#include "platform/NotificationCenter.h"

#include <string_view>

namespace velmora {

class SessionBus;

/// A notification "a.b.c" is the signal "c" of the interface "a.b", sent from the path "/a/b"
/// without arguments.
class LinuxNotificationCenter final : public NotificationCenter {
 public:
  /// `bus` is kept by reference.
  explicit LinuxNotificationCenter(SessionBus& bus);

  void post(std::string_view name) noexcept override;

 private:
  SessionBus& bus_;
};

}  // namespace velmora
