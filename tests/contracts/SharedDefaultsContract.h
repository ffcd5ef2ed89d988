// The contract of every SharedDefaults. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/SharedDefaults.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace velmora {

/// An adapter has
///   const SharedDefaults& defaults();
///   void store(std::string_view suite, std::string_view key, std::string_view value);
///       stores a value as the application would
///   void makeUnusable(std::string_view suite);
///       makes a suite impossible to open; its values are lost
template <class Adapter>
class SharedDefaultsContract : public testing::Test {};

TYPED_TEST_SUITE_P(SharedDefaultsContract);

TYPED_TEST_P(SharedDefaultsContract, findsAStoredValueUnderItsSuiteAndKeyOnly) {
  TypeParam adapter;
  const SharedDefaults& defaults = adapter.defaults();
  EXPECT_EQ(defaults.string("group.org.example", "Key.v1"), std::nullopt);
  for (const std::string value : {"", "pt-BR", "日本語", "e\u0301", "a b", "\"quoted\""}) {
    adapter.store("group.org.example", "Key.v1", value);
    EXPECT_EQ(defaults.string("group.org.example", "Key.v1").value_or("none").utf8(), value);
  }
  EXPECT_EQ(defaults.string("group.org.example", "Key.v2"), std::nullopt);
  EXPECT_EQ(defaults.string("group.org.other", "Key.v1"), std::nullopt);
  adapter.makeUnusable("group.org.example");
  EXPECT_EQ(defaults.string("group.org.example", "Key.v1"), std::nullopt);
}

REGISTER_TYPED_TEST_SUITE_P(SharedDefaultsContract, findsAStoredValueUnderItsSuiteAndKeyOnly);

}  // namespace velmora
