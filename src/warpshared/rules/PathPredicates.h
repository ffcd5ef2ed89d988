// The paths and object keys that a file may name.
//
// Both predicates are called for every entry of a manifest. Nearly every path is ASCII, and then
// costs one look at each byte.
#pragma once

#include <string_view>

namespace velmora::internal {

/// Whether `path` is absolute, has no NUL, and is canonically equal to its lexically standardised
/// form (LexicalPath.h). The "/" at the beginning must be a whole character. Reads no file.
[[nodiscard]] bool isCanonicalAbsolutePath(std::string_view path);

/// Whether `key` consists of components that are neither empty nor "." nor ".." (by canonical
/// equivalence), and has no NUL. Only a "/" that is a whole character separates components.
[[nodiscard]] bool isSafeRelativeObjectKey(std::string_view key);

}  // namespace velmora::internal
