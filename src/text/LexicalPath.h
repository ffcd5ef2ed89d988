// Standardisation of POSIX paths by their text alone, without access to files or symbolic links.
//
// It works on bytes, as POSIX resolves path names: every "/" byte is a separator (IEEE Std 1003.1,
// 4.13 Pathname Resolution), even as part of a Unicode character with a combining mark.
#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// The path without repeated "/" (also leading ones), "." components and a trailing "/". Each ".."
/// removes the component before it; at the root it has no effect. A relative path stays relative,
/// and keeps each ".." that has no component to remove; it becomes "." when nothing is left. The
/// empty path stays empty.
[[nodiscard]] std::string lexicallyStandardized(std::string_view path);

/// `directory` followed by `component`, both unchanged. A "/" separates them unless `directory` is
/// empty or ends in one.
[[nodiscard]] std::string appendingPathComponent(std::string_view directory,
                                                 std::string_view component);

}  // namespace velmora
