// Texts compared by their bytes, for tests that distinguish canonically equal texts.
#pragma once

#include "text/Text.h"

#include <string>
#include <vector>

namespace velmora {

inline std::vector<std::string> bytesOf(const std::vector<Text>& texts) {
  std::vector<std::string> bytes;
  for (const Text& text : texts) {
    bytes.push_back(text.utf8());
  }
  return bytes;
}

}  // namespace velmora
