// File URLs: the form in which a file manager names what the user selected.
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

/// Reads an absolute URL (RFC 3986, RFC 8089). None unless the scheme is "file" in any case, the
/// authority is absent, empty or "localhost" in any case, the path begins with "/", and the
/// percent-decoded path is UTF-8 without an encoded NUL or "/". A query or fragment is left out,
/// unread. Characters that should have been percent-encoded but were not stand for themselves.
[[nodiscard]] std::optional<FileURL> fileURLFromURLText(std::string_view url);

/// The URL of an absolute path. None when the path does not begin with "/", holds a NUL, or is not
/// UTF-8.
[[nodiscard]] std::optional<FileURL> fileURLFromAbsolutePath(std::string_view path);

}  // namespace velmora
