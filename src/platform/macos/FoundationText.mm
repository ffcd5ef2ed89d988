#include "platform/macos/FoundationText.h"

#include <utility>

namespace velmora {

namespace {

NSString* decodedString(std::string_view bytes, NSStringEncoding encoding) {
  return [[[NSString alloc] initWithBytes:bytes.data() length:bytes.size()
                                 encoding:encoding] autorelease];
}

}  // namespace

NSString* foundationString(std::string_view utf8) {
  return decodedString(utf8, NSUTF8StringEncoding);
}

NSString* readableString(std::string_view utf8) {
  NSString* string = foundationString(utf8);
  return string != nil ? string : decodedString(utf8, NSISOLatin1StringEncoding);
}

std::optional<std::string> utf8Of(NSString* string) {
  @autoreleasepool {
    NSData* utf8 = [string dataUsingEncoding:NSUTF8StringEncoding];
    if (utf8 == nil) {
      return std::nullopt;
    }
    return std::string(static_cast<const char*>([utf8 bytes]), [utf8 length]);
  }
}

std::optional<Text> pathOf(NSURL* url) {
  std::optional<std::string> path = utf8Of([url path]);
  return path ? std::optional<Text>(*std::move(path)) : std::nullopt;
}

}  // namespace velmora
