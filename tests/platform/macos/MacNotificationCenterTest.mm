#include "platform/macos/MacNotificationCenter.h"
#include "tests/contracts/NotificationCenterContract.h"
#include "tests/gnustep/NotificationObserver.h"
#include "tests/platform/macos/MethodReplacement.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace velmora {
namespace {

id noCenter(id, SEL) {
  [NSException raise:NSGenericException format:@"nobody delivers"];
  return nil;
}

/// Another process observes the notifications. It can observe any name, but needs it in advance.
class MacNotificationsAdapter {
 public:
  NotificationCenter& center() { return center_; }

  std::vector<std::string> received(std::size_t count) {
    for (const ReceivedNotification& notification : observer_.received()) {
      EXPECT_EQ(notification.object, std::nullopt);
      EXPECT_EQ(notification.userInfo, std::nullopt);
      names_.push_back(notification.name);
    }
    EXPECT_EQ(names_.size(), count);
    return names_;
  }

  void breakDelivery() {
    broken_.emplace(
        class_getClassMethod([NSDistributedNotificationCenter class], @selector(defaultCenter)),
        noCenter);
  }

 private:
  NotificationObserver observer_{{"org.example.Application.somethingHappened",
                                  "org.example.Application.one", "org.example.Application.two",
                                  "org.example.Application.delivered"}};
  MacNotificationCenter center_;
  std::vector<std::string> names_;
  std::optional<MethodReplacement> broken_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, NotificationCenterContract, MacNotificationsAdapter);

}  // namespace
}  // namespace velmora
