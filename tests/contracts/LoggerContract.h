// The contract of every Logger. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/Logger.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// An adapter has
///   Logger& logger();
///   std::vector<std::string> lines();
///       the lines logged since the start, without the prefixes of the log; called once, after all
///       lines were logged
template <class Adapter>
class LoggerContract : public testing::Test {};

TYPED_TEST_SUITE_P(LoggerContract);

TYPED_TEST_P(LoggerContract, writesLinesUnchangedAndInOrder) {
  TypeParam adapter;
  const std::vector<std::string> lines = {"plain", "", "100%25 %s %n %d %%", "復元 e\u0301",
                                          std::string(5000, 'x')};
  for (const std::string& line : lines) {
    // The logger must not read beyond the end of the view.
    adapter.logger().log(std::string_view(line + "and what follows").substr(0, line.size()));
  }
  EXPECT_EQ(adapter.lines(), lines);
}

REGISTER_TYPED_TEST_SUITE_P(LoggerContract, writesLinesUnchangedAndInOrder);

}  // namespace velmora
