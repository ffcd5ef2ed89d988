// Distributed notifications.
#pragma once

#include "platform/NotificationCenter.h"

namespace velmora {

/// Posts without object and user information; the sandbox lets none through.
class MacNotificationCenter final : public NotificationCenter {
 public:
  void post(std::string_view name) noexcept override;
};

}  // namespace velmora
