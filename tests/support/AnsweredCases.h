// Cases with their answers, kept as data: one JSON object per line, read by the tests of the
// functions that must give these answers.
//
// A row: {"name": …, "input": …, "other": …, "paths": […], "expect": …}. All but "name" and
// "expect" may be absent. Texts hold what the JSON escapes say, NUL included.
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

  /// The answer as `Answer`, one of the alternatives. Throws when the row has another one.
  template <typename Answer>
  const Answer& expect() const {
    return std::get<Answer>(expected);
  }
};

/// The rows of the file at `path` below the test data, in order. Throws when the file is missing or
/// any row is not as described above, so that no case goes unasked.
[[nodiscard]] std::vector<AnsweredCase> readAnsweredCases(std::string_view path);

}  // namespace velmora
