// What every NotificationCenter promises. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/NotificationCenter.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <string>
#include <vector>

namespace velmora {

template <class Adapter>
concept NotificationCenterAdapter = std::default_initializable<Adapter> &&
    requires(Adapter& adapter, std::size_t count) {
  { adapter.center() } -> std::convertible_to<NotificationCenter&>;
  // Waits until another program has received `count` notifications since the beginning, and
  // returns the names of all that it has received, in order.
  { adapter.received(count) } -> std::same_as<std::vector<std::string>>;
  // From here on nothing can be delivered.
  adapter.breakDelivery();
};

template <class Adapter>
class NotificationCenterContract : public testing::Test {
  static_assert(NotificationCenterAdapter<Adapter>);

 protected:
  Adapter adapter;
};

TYPED_TEST_SUITE_P(NotificationCenterContract);

TYPED_TEST_P(NotificationCenterContract, deliversANotificationUnderItsName) {
  this->adapter.center().post("org.example.Application.somethingHappened");
  EXPECT_EQ(this->adapter.received(1),
            std::vector<std::string>{"org.example.Application.somethingHappened"});
}

TYPED_TEST_P(NotificationCenterContract, deliversEveryNotificationInOrder) {
  const std::vector<std::string> names = {
      "org.example.Application.one", "org.example.Application.two", "org.example.Application.one"};
  for (const std::string& name : names) {
    this->adapter.center().post(name);
  }
  EXPECT_EQ(this->adapter.received(names.size()), names);
}

TYPED_TEST_P(NotificationCenterContract, bearsTheLossOfANotification) {
  this->adapter.center().post("org.example.Application.delivered");
  const std::vector<std::string> received = this->adapter.received(1);
  this->adapter.breakDelivery();
  this->adapter.center().post("org.example.Application.lost");
  EXPECT_EQ(received, std::vector<std::string>{"org.example.Application.delivered"});
}

REGISTER_TYPED_TEST_SUITE_P(NotificationCenterContract, deliversANotificationUnderItsName,
                            deliversEveryNotificationInOrder, bearsTheLossOfANotification);

}  // namespace velmora
