// What every SharedDefaults promises. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/SharedDefaults.h"

#include <gtest/gtest.h>

#include <concepts>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

template <class Adapter>
concept SharedDefaultsAdapter = std::default_initializable<Adapter> &&
    requires(Adapter& adapter, std::string_view text) {
  { adapter.defaults() } -> std::convertible_to<const SharedDefaults&>;
  // Stores a value as the application would: store(suite, key, value).
  adapter.store(text, text, text);
  // Makes a suite one that cannot be opened; what it held is gone.
  adapter.makeUnusable(text);
};

template <class Adapter>
class SharedDefaultsContract : public testing::Test {
  static_assert(SharedDefaultsAdapter<Adapter>);

 protected:
  std::optional<std::string> stored(std::string_view suite, std::string_view key) {
    const std::optional<Text> value = adapter.defaults().string(suite, key);
    return value ? std::optional(value->utf8()) : std::nullopt;
  }

  Adapter adapter;
};

TYPED_TEST_SUITE_P(SharedDefaultsContract);

TYPED_TEST_P(SharedDefaultsContract, holdsNothingInASuiteThatNobodyMade) {
  EXPECT_EQ(this->stored("group.org.example", "Key.v1"), std::nullopt);
}

TYPED_TEST_P(SharedDefaultsContract, findsAValueUnderItsSuiteAndKeyOnly) {
  this->adapter.store("group.org.example", "Key.v1", "value");
  EXPECT_EQ(this->stored("group.org.example", "Key.v1"), "value");
  EXPECT_EQ(this->stored("group.org.example", "Key.v2"), std::nullopt);
  EXPECT_EQ(this->stored("group.org.other", "Key.v1"), std::nullopt);
}

TYPED_TEST_P(SharedDefaultsContract, returnsValuesAsTheyWereStored) {
  for (const std::string value : {"", "pt-BR", "日本語", "e\u0301", "a b", "\"quoted\""}) {
    this->adapter.store("group.org.example", "Key.v1", value);
    EXPECT_EQ(this->stored("group.org.example", "Key.v1"), value);
  }
}

TYPED_TEST_P(SharedDefaultsContract, readsAfreshAtEveryCall) {
  this->adapter.store("group.org.example", "Key.v1", "first");
  EXPECT_EQ(this->stored("group.org.example", "Key.v1"), "first");
  this->adapter.store("group.org.example", "Key.v1", "second");
  EXPECT_EQ(this->stored("group.org.example", "Key.v1"), "second");
}

TYPED_TEST_P(SharedDefaultsContract, takesASuiteThatCannotBeOpenedForAnEmptyOne) {
  this->adapter.store("group.org.example", "Key.v1", "value");
  this->adapter.makeUnusable("group.org.example");
  EXPECT_EQ(this->stored("group.org.example", "Key.v1"), std::nullopt);
}

REGISTER_TYPED_TEST_SUITE_P(SharedDefaultsContract, holdsNothingInASuiteThatNobodyMade,
                            findsAValueUnderItsSuiteAndKeyOnly, returnsValuesAsTheyWereStored,
                            readsAfreshAtEveryCall, takesASuiteThatCannotBeOpenedForAnEmptyOne);

}  // namespace velmora
