// A path, or a key: the predicates answer what the rules that they stand for answer, word by word.
#include "fuzz/Property.h"
#include "text/Characters.h"
#include "text/LexicalPath.h"
#include "text/Text.h"
#include "warpshared/PathPredicates.h"

#include <algorithm>

namespace velmora {
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
}  // namespace velmora

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = velmora::textOf(data, size);
  velmora::require(velmora::isCanonicalAbsolutePath(text) == velmora::isCanonicalByTheRules(text));
  velmora::require(velmora::isSafeRelativeObjectKey(text) == velmora::isSafeByTheRules(text));
  return 0;
}
