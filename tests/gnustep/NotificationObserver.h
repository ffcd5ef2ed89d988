// Another process that observes distributed notifications.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <sys/types.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace velmora {

/// std::nullopt stands for nil. Spaces replace control characters in the texts.
struct ReceivedNotification {
  std::string name;
  std::optional<std::string> object;
  /// The description of the dictionary.
  std::optional<std::string> userInfo;

  bool operator==(const ReceivedNotification&) const = default;
  friend std::ostream& operator<<(std::ostream& stream, const ReceivedNotification& notification) {
    return stream << notification.name << ", object " << notification.object.value_or("nil")
                  << ", user information " << notification.userInfo.value_or("nil");
  }
};

/// The first observer starts a notification daemon, which only this process and programs with its
/// gnustepEnvironment() use. The daemon ends with this process. Before that, posting raises an
/// exception of Objective-C.
class NotificationObserver {
 public:
  /// Observes the notifications with these names, of any object. Is ready after construction.
  /// Throws std::exception.
  explicit NotificationObserver(const std::vector<std::string>& names);
  NotificationObserver(const NotificationObserver&) = delete;
  NotificationObserver& operator=(const NotificationObserver&) = delete;
  ~NotificationObserver();

  /// The notifications received since the last call. They include all that this thread posted
  /// before this call. Throws std::exception.
  std::vector<ReceivedNotification> received();

 private:
  /// The lines before `end`.
  std::vector<std::string> linesUntil(const std::string& end);

  FileDescriptor socket_;
  pid_t process_ = 0;
  int fences_ = 0;
};

}  // namespace velmora
