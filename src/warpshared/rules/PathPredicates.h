// Which paths and object keys a file may name.
//
// Both predicates are asked for every entry of files with a hundred thousand of them, so that what
// is ASCII, as nearly every path is, costs no more than one look at each byte.
#pragma once

#include <string_view>

namespace velmora::internal {

/// Whether `path` is absolute, holds no NUL, and is in the form that lexical standardisation gives
/// it (LexicalPath.h; compared by canonical equivalence). The "/" at the beginning must be a whole
/// character. No file is looked at.
[[nodiscard]] bool isCanonicalAbsolutePath(std::string_view path);

/// Whether `key` is made of components that are neither empty nor "." nor ".." (compared by
/// canonical equivalence), and holds no NUL. Only a "/" that is a whole character separates them.
[[nodiscard]] bool isSafeRelativeObjectKey(std::string_view key);

}  // namespace velmora::internal
