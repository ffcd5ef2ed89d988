// Writes strings files for tests.
#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// A key or a value with its quotes.
inline std::string stringsLiteral(std::string_view text) {
  std::string result = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') {
      result.push_back('\\');
    }
    result.push_back(character);
  }
  return result + "\"";
}

}  // namespace velmora
