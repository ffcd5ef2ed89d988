// The output of an observer of notifications: lines of fields, separated by tabs.
#pragma once

#include <string_view>

namespace velmora {

/// The first line.
inline constexpr std::string_view observerReady = "ready";

/// A line with name, object and user information begins with this. The latter two begin with
/// `presentField`, or are empty for nil.
inline constexpr std::string_view observerReceived = "received";
inline constexpr char presentField = '=';

/// Tests post a fence after other notifications, to see that those have arrived. A line with the
/// fence's object begins with this.
inline constexpr std::string_view observerFence = "fence";
inline constexpr const char* fenceNotification = "velmora.tests.fence";

}  // namespace velmora
