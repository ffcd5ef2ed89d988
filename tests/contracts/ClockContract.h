// The contract of every Clock. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/Clock.h"

#include <gtest/gtest.h>

#include <chrono>

namespace velmora {

/// An adapter has `const Clock& clock()` and `time_point time()`, the time of day in its world.
template <class Adapter>
class ClockContract : public testing::Test {};

TYPED_TEST_SUITE_P(ClockContract);

TYPED_TEST_P(ClockContract, returnsTheTimeOfDay) {
  TypeParam adapter;
  const std::chrono::system_clock::time_point before = adapter.time();
  const std::chrono::system_clock::time_point now = adapter.clock().now();
  EXPECT_LE(before, now);
  EXPECT_LE(now, adapter.time());
}

REGISTER_TYPED_TEST_SUITE_P(ClockContract, returnsTheTimeOfDay);

}  // namespace velmora
