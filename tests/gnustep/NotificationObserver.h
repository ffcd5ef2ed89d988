// Another process that observes distributed notifications.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <sys/types.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace velmora {

/// nil is none. Control characters in the texts have become spaces.
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

/// The first one starts a notification daemon that this process and the programs with its
/// gnustepEnvironment() have for themselves; it ends with this process. Before that, a notification
/// reaches nobody: posting raises an exception of Objective-C.
class NotificationObserver {
 public:
  /// Observes the notifications with these names, of any object. Ready when constructed. Throws
  /// std::exception.
  explicit NotificationObserver(const std::vector<std::string>& names);
  NotificationObserver(const NotificationObserver&) = delete;
  NotificationObserver& operator=(const NotificationObserver&) = delete;
  ~NotificationObserver();

  /// What it has received since the last time. Complete: everything that this thread has posted
  /// before this call is among it. Throws std::exception.
  std::vector<ReceivedNotification> received();

 private:
  /// The lines up to `end`.
  std::vector<std::string> linesUntil(const std::string& end);

  FileDescriptor socket_;
  pid_t process_ = 0;
  int fences_ = 0;
};

}  // namespace velmora
