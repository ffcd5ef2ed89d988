// Answered cases, kept as data: one JSON object per line, which has an input and the expected
// answer.
//
// A row: {"name": …, "input": …, "other": …, "paths": […], "expect": …}. Only "name" and "expect"
// are required. A text is the value of its JSON string, and may contain NUL.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velmora {

struct AnsweredCase {
  std::string name;
  std::string input;
  std::string other;
  std::vector<std::string> paths;
  std::variant<bool, std::int64_t, std::string, std::vector<std::string>> expected;

  /// The answer as `Answer`, one of the alternatives. Throws when the answer has another type.
  template <typename Answer>
  const Answer& expect() const {
    return std::get<Answer>(expected);
  }
};

/// The rows of the file at `path` below the test data, in order. Throws when the file is missing,
/// or when a row has another format, so that no case is skipped.
[[nodiscard]] std::vector<AnsweredCase> readAnsweredCases(std::string_view path);

}  // namespace velmora
