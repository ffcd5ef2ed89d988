// A URL and a path: an accepted URL names a usable path, and every usable path has a URL.
#include "fuzz/Property.h"
#include "text/FileURL.h"

#include <string>

namespace velmora {
namespace {

std::string escaped(std::string_view path) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string url = "FILE://LocalHost";
  for (const char character : path) {
    if (character == '/') {
      url += '/';
      continue;
    }
    const auto byte = static_cast<unsigned char>(character);
    url.append({'%', digits[byte / 16U], digits[byte % 16U]});
  }
  return url;
}

void requireUsable(const FileURL& url) {
  const std::string& path = url.path.utf8();
  require(path.starts_with('/'));
  require(path.find('\0') == std::string::npos);
  require(isUTF8(path));
  const std::optional<FileURL> again = fileURLFromURLText(escaped(path));
  require(again && again->path.utf8() == path);
  require(fileURLFromAbsolutePath(path) == url);
}

void requireUsableOrNone(const std::optional<FileURL>& url) {
  if (url) {
    requireUsable(*url);
  }
}

}  // namespace
}  // namespace velmora

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = velmora::textOf(data, size);
  velmora::requireUsableOrNone(velmora::fileURLFromURLText(text));
  velmora::requireUsableOrNone(velmora::fileURLFromURLText("file:" + std::string(text)));
  velmora::requireUsableOrNone(velmora::fileURLFromAbsolutePath(text));
  return 0;
}
