// Answered cases for a function.
#pragma once

#include "tests/support/AnsweredCases.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace velmora::internal {

/// Compares the answers of `ask` with those of all `count` cases of the file at `path`.
template <class Answer, class Ask>
void expectAnswers(std::string_view path, std::size_t count, Ask ask) {
  const std::vector<AnsweredCase> cases = readAnsweredCases(path);
  EXPECT_EQ(cases.size(), count);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ask(row), row.expect<Answer>());
  }
}

}  // namespace velmora::internal
