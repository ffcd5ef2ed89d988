// Distributed notifications.
#pragma once

#include "platform/NotificationCenter.h"

namespace velmora {

/// Posts without an object and without user information, because the sandbox does not pass them on.
class MacNotificationCenter final : public NotificationCenter {
 public:
  void post(std::string_view name) noexcept override;
};

}  // namespace velmora
