// What every Logger promises. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/Logger.h"

#include <gtest/gtest.h>

#include <concepts>
#include <string>
#include <vector>

namespace velmora {

template <class Adapter>
concept LoggerAdapter = std::default_initializable<Adapter> && requires(Adapter& adapter) {
  { adapter.logger() } -> std::convertible_to<Logger&>;
  // The lines logged since the beginning, without what the log puts in front of them. Called once,
  // when all is logged.
  { adapter.lines() } -> std::same_as<std::vector<std::string>>;
};

template <class Adapter>
class LoggerContract : public testing::Test {
  static_assert(LoggerAdapter<Adapter>);

 protected:
  Adapter adapter;
};

TYPED_TEST_SUITE_P(LoggerContract);

TYPED_TEST_P(LoggerContract, writesLinesExactlyAndInOrder) {
  const std::vector<std::string> lines = {"plain", "", "100%25 %s %n %d %%", "復元 e\u0301",
                                          std::string(5000, 'x')};
  for (const std::string& line : lines) {
    this->adapter.logger().log(line);
  }
  EXPECT_EQ(this->adapter.lines(), lines);
}

TYPED_TEST_P(LoggerContract, writesNoMoreThanTheView) {
  const std::string text = "line and what follows it";
  this->adapter.logger().log(std::string_view(text).substr(0, 4));
  EXPECT_EQ(this->adapter.lines(), std::vector<std::string>{"line"});
}

REGISTER_TYPED_TEST_SUITE_P(LoggerContract, writesLinesExactlyAndInOrder, writesNoMoreThanTheView);

}  // namespace velmora
