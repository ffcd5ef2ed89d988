// A path and a continuation: the standardised form contains nothing to remove. Standardising before
// appending makes no difference.
#include "fuzz/Property.h"
#include "text/LexicalPath.h"

#include <string>

namespace velmora {
namespace {

void requireNothingToRemove(std::string_view path) {
  const bool isAbsolute = path.starts_with('/');
  bool mayGoUp = !isAbsolute;
  std::string_view rest = path.substr(isAbsolute ? 1 : 0);
  while (!rest.empty()) {
    const std::size_t end = rest.find('/');
    const std::string_view component = rest.substr(0, end);
    require(!component.empty() && component != ".");
    require(component != ".." || mayGoUp);
    mayGoUp = mayGoUp && component == "..";
    require(end != rest.size() - 1);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
}

void requireStandardized(std::string_view path) {
  const std::string standardized = lexicallyStandardized(path);
  require(lexicallyStandardized(standardized) == standardized);
  require(standardized.empty() == path.empty());
  require(standardized.starts_with('/') == path.starts_with('/'));
  require(standardized.size() <= path.size());
  if (standardized != ".") {
    requireNothingToRemove(standardized);
  }
}

void requireSameInTwoSteps(std::string_view path, std::string_view continuation) {
  const std::string whole = appendingPathComponent(path, continuation);
  const std::string early = appendingPathComponent(lexicallyStandardized(path), continuation);
  require(lexicallyStandardized(whole) == lexicallyStandardized(early));
}

}  // namespace
}  // namespace velmora

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [path, continuation] = velmora::halvesOf(velmora::textOf(data, size));
  velmora::requireStandardized(path);
  velmora::requireStandardized(continuation);
  velmora::requireSameInTwoSteps(path, continuation);
  return 0;
}
