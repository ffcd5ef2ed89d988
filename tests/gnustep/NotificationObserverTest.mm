#include "tests/gnustep/NotificationObserver.h"
#include "tests/gnustep/Strings.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <vector>

namespace velmora {

namespace {

void post(const std::string& name, NSString* object = nil, NSDictionary* userInfo = nil) {
  [[NSDistributedNotificationCenter defaultCenter] postNotificationName:nsString(name)
                                                                 object:object
                                                               userInfo:userInfo
                                                     deliverImmediately:YES];
}

using Received = std::vector<ReceivedNotification>;

TEST(NotificationObserverTest, receivesNotificationsOfAnotherProcess) {
  NotificationObserver observer({"velmora.posted"});
  EXPECT_EQ(observer.received(), Received());
  post("velmora.posted");
  EXPECT_EQ(observer.received(), Received({{.name = "velmora.posted"}}));
  EXPECT_EQ(observer.received(), Received());
}

TEST(NotificationObserverTest, receivesObjectAndUserInformation) {
  NotificationObserver observer({"velmora.posted"});
  post("velmora.posted", @"object");
  post("velmora.posted", @"", @{@"key" : @"value"});
  const Received received = observer.received();
  ASSERT_EQ(received.size(), 2U);
  EXPECT_EQ(received[0].object, "object");
  EXPECT_EQ(received[0].userInfo, std::nullopt);
  EXPECT_EQ(received[1].object, "");
  EXPECT_NE(received[1].userInfo.value_or("").find("key = value"), std::string::npos)
      << received[1].userInfo.value_or("nil");
}

TEST(NotificationObserverTest, doesNotReceiveOtherNames) {
  NotificationObserver observer({"velmora.posted"});
  post("velmora.other");
  EXPECT_EQ(observer.received(), Received());
}

TEST(NotificationObserverTest, receivesEveryNotificationInOrder) {
  NotificationObserver observer({"velmora.posted"});
  Received posted;
  for (int count = 0; count < 20; ++count) {
    const std::string object = std::to_string(count);
    post("velmora.posted", nsString(object));
    posted.push_back({.name = "velmora.posted", .object = object});
  }
  EXPECT_EQ(observer.received(), posted);
}

TEST(NotificationObserverTest, severalObserversReceiveTheSame) {
  NotificationObserver one({"velmora.posted"});
  NotificationObserver other({"velmora.posted"});
  post("velmora.posted");
  EXPECT_EQ(one.received(), Received({{.name = "velmora.posted"}}));
  EXPECT_EQ(other.received(), Received({{.name = "velmora.posted"}}));
}

}  // namespace
}  // namespace velmora
