// Standardisation of POSIX paths by their text alone: no file is looked at, no link is followed.
//
// Works on bytes, because a POSIX path name is resolved by bytes: every "/" byte separates
// (IEEE Std 1003.1, 4.13 Pathname Resolution), whatever Unicode character it is part of.
#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// The path without repeated "/" (also leading ones), "." components and a trailing "/", and with
/// ".." resolved against the component before it; above the root, ".." stays at the root. A
/// relative path stays relative and keeps the ".." that it cannot resolve; one that comes to
/// nothing is ".". The empty path stays empty.
[[nodiscard]] std::string lexicallyStandardized(std::string_view path);

/// `component` below `directory`, both as they stand. A "/" comes between them unless `directory`
/// is empty or ends in one.
[[nodiscard]] std::string appendingPathComponent(std::string_view directory,
                                                 std::string_view component);

}  // namespace velmora
