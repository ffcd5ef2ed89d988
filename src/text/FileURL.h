// File URLs, the form in which a file manager names the selected items.
#pragma once

#include "text/Text.h"

#include <optional>
#include <string_view>

namespace velmora {

/// A file URL, held as the path that it names: absolute, UTF-8, without NUL, not standardised.
struct FileURL {
  Text path;

  bool operator==(const FileURL&) const = default;
};

/// Parses an absolute URL (RFC 3986, RFC 8089). Returns none unless all of these hold:
///
/// - The scheme is "file", in any case.
/// - The authority is absent, empty or "localhost", in any case.
/// - The path begins with "/".
/// - Each "%" begins a complete escape, and none encodes a "/".
/// - The percent-decoded path is UTF-8 without NUL.
///
/// A query or fragment is ignored. A character that should have been percent-encoded stands for
/// itself.
[[nodiscard]] std::optional<FileURL> fileURLFromURLText(std::string_view url);

/// The URL of an absolute path. None when the path does not begin with "/", contains a NUL, or is
/// not UTF-8.
[[nodiscard]] std::optional<FileURL> fileURLFromAbsolutePath(std::string_view path);

}  // namespace velmora
