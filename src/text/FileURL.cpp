#include "text/FileURL.h"

#include "text/Hexadecimal.h"

#include <algorithm>

namespace velmora {
namespace {

constexpr char lowercased(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

bool equalsIgnoringCase(std::string_view text, std::string_view lowercase) {
  return std::ranges::equal(text, lowercase, {}, lowercased);
}

/// The part after the scheme; none unless the scheme is "file", in any case (RFC 3986, 3.1).
std::optional<std::string_view> afterFileScheme(std::string_view url) {
  constexpr std::string_view scheme = "file:";
  if (!equalsIgnoringCase(url.substr(0, scheme.size()), scheme)) {
    return std::nullopt;
  }
  return url.substr(scheme.size());
}

/// The path of the hierarchical part; none unless its authority means this machine (RFC 8089, 2).
std::optional<std::string_view> afterLocalAuthority(std::string_view hierarchicalPart) {
  if (!hierarchicalPart.starts_with("//")) {
    return hierarchicalPart;
  }
  const std::string_view rest = hierarchicalPart.substr(2);
  const std::size_t authorityEnd = std::min(rest.find('/'), rest.size());
  const std::string_view authority = rest.substr(0, authorityEnd);
  if (!authority.empty() && !equalsIgnoringCase(authority, "localhost")) {
    return std::nullopt;
  }
  return rest.substr(authorityEnd);
}

/// None for a malformed escape, and for an escaped "/", which cannot be part of a name.
std::optional<std::string> percentDecodedPath(std::string_view path) {
  std::string decoded;
  decoded.reserve(path.size());
  for (std::size_t position = 0; position < path.size(); ++position) {
    if (path[position] != '%') {
      decoded += path[position];
      continue;
    }
    const std::optional<char> byte = internal::percentDecodedByte(path.substr(position));
    if (!byte || *byte == '/') {
      return std::nullopt;
    }
    decoded += *byte;
    position += 2;
  }
  return decoded;
}

}  // namespace

std::optional<FileURL> fileURLFromURLText(std::string_view url) {
  const std::optional<std::string_view> hierarchicalPart =
      afterFileScheme(url.substr(0, url.find_first_of("?#")));
  if (!hierarchicalPart) {
    return std::nullopt;
  }
  const std::optional<std::string_view> path = afterLocalAuthority(*hierarchicalPart);
  if (!path) {
    return std::nullopt;
  }
  const std::optional<std::string> decoded = percentDecodedPath(*path);
  if (!decoded) {
    return std::nullopt;
  }
  return fileURLFromAbsolutePath(*decoded);
}

std::optional<FileURL> fileURLFromAbsolutePath(std::string_view path) {
  const bool isUsable =
      path.starts_with('/') && path.find('\0') == std::string_view::npos && isUTF8(path);
  if (!isUsable) {
    return std::nullopt;
  }
  return FileURL{.path = path};
}

}  // namespace velmora
