// The rules of paths and object keys in their simplest form, for the test and the fuzzer of the
// quick predicates.
#pragma once

#include "text/Characters.h"
#include "text/LexicalPath.h"
#include "text/Text.h"

#include <algorithm>
#include <string_view>

namespace velmora::internal {

inline bool hasNUL(std::string_view text) { return text.find('\0') != std::string_view::npos; }

inline bool isCanonicalByTheRules(std::string_view path) {
  return hasCharacterPrefix(path, "/") && !hasNUL(path) &&
         canonicallyEqual(path, lexicallyStandardized(path));
}

inline bool isSafeByTheRules(std::string_view key) {
  return !key.empty() && !hasCharacterPrefix(key, "/") && !hasNUL(key) &&
         std::ranges::none_of(splitAtCharacter(key, '/'), [](std::string_view component) {
           return component.empty() || canonicallyEqual(component, ".") ||
                  canonicallyEqual(component, "..");
         });
}

}  // namespace velmora::internal
