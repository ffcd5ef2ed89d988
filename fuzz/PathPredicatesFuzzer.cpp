// A path or a key: the predicates agree with the rules in their simplest form.
#include "fuzz/Property.h"
#include "text/Characters.h"
#include "text/LexicalPath.h"
#include "text/Text.h"
#include "warpshared/rules/TextRules.h"

#include <algorithm>

namespace velmora::internal {
namespace {

bool holdsNUL(std::string_view text) { return text.find('\0') != std::string_view::npos; }

bool isCanonicalByTheRules(std::string_view path) {
  return hasCharacterPrefix(path, "/") && !holdsNUL(path) &&
         canonicallyEqual(path, lexicallyStandardized(path));
}

bool isSafeByTheRules(std::string_view key) {
  return !key.empty() && !hasCharacterPrefix(key, "/") && !holdsNUL(key) &&
         std::ranges::none_of(splitAtCharacter(key, '/'), [](std::string_view component) {
           return component.empty() || canonicallyEqual(component, ".") ||
                  canonicallyEqual(component, "..");
         });
}

}  // namespace
}  // namespace velmora::internal

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmora;
  const std::string_view text = textOf(data, size);
  require(internal::isCanonicalAbsolutePath(text) == internal::isCanonicalByTheRules(text));
  require(internal::isSafeRelativeObjectKey(text) == internal::isSafeByTheRules(text));
  return 0;
}
