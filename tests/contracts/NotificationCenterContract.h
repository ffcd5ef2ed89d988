// The contract of every NotificationCenter. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/NotificationCenter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {

/// An adapter has
///   NotificationCenter& center();
///   std::vector<std::string> received(std::size_t count);
///       waits until another program has received `count` notifications since the start, and
///       returns the names of all that it has received, in order
///   void breakDelivery();
///       makes the delivery of every later notification fail
template <class Adapter>
class NotificationCenterContract : public testing::Test {};

TYPED_TEST_SUITE_P(NotificationCenterContract);

TYPED_TEST_P(NotificationCenterContract, deliversEveryNotificationInOrderAndIgnoresAFailure) {
  TypeParam adapter;
  const std::vector<std::string> names = {
      "org.example.Application.one", "org.example.Application.two", "org.example.Application.one"};
  for (const std::string& name : names) {
    adapter.center().post(name);
  }
  EXPECT_EQ(adapter.received(names.size()), names);
  adapter.breakDelivery();
  adapter.center().post("org.example.Application.lost");
}

REGISTER_TYPED_TEST_SUITE_P(NotificationCenterContract,
                            deliversEveryNotificationInOrderAndIgnoresAFailure);

}  // namespace velmora
