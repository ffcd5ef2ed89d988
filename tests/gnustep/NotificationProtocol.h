// What an observer of notifications tells its test: lines of fields, separated by tabs.
#pragma once

#include <string_view>

namespace velmora {

/// The first line.
inline constexpr std::string_view observerReady = "ready";

/// A line with name, object and user information follows it. The latter two begin with
/// `presentField`, or are empty for nil.
inline constexpr std::string_view observerReceived = "received";
inline constexpr char presentField = '=';

/// A notification that tests post behind others to see that those have arrived. A line with its
/// object follows.
inline constexpr std::string_view observerFence = "fence";
inline constexpr const char* fenceNotification = "velmora.tests.fence";

}  // namespace velmora
