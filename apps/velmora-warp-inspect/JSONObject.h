// JSON as the program prints it: in one line, with the keys in the order in which they are added.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::inspect {

/// `text` as a JSON string; bytes that are not UTF-8 are replaced (DisplayText.h).
[[nodiscard]] std::string jsonString(std::string_view text);

/// An array of elements that are JSON already.
[[nodiscard]] std::string jsonArray(const std::vector<std::string>& elements);

/// Keys are ASCII and each is added once.
class JSONObject {
 public:
  void addText(std::string_view key, std::string_view value);
  void addNumber(std::string_view key, std::size_t value);
  void addFlag(std::string_view key, bool value);
  void addNull(std::string_view key);
  /// `json` is a value already.
  void addJSON(std::string_view key, std::string_view json);

  [[nodiscard]] std::string json() const { return members_ + "}"; }

 private:
  std::string members_ = "{";
};

}  // namespace velmora::inspect
