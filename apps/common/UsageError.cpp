#include "common/UsageError.h"

#include <algorithm>
#include <utility>

namespace velmora {

bool isOption(const std::string& argument) {
  return argument.size() > 1 && argument.front() == '-';
}

UsageError usageErrorInOneLine(std::string message) {
  std::ranges::replace_if(
      message,
      [](char character) {
        return static_cast<unsigned char>(character) < ' ' || character == '\x7F';
      },
      '?');
  return {std::move(message)};
}

}  // namespace velmora
