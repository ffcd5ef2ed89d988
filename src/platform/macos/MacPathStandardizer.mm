#include "platform/macos/MacPathStandardizer.h"

#include "platform/macos/FoundationText.h"

namespace velmora {

Text MacPathStandardizer::standardizedFileURLPath(const Text& path) const {
  @autoreleasepool {
    NSString* string = foundationString(path);
    if (string == nil) {
      return {};
    }
    // Foundation does not define a URL for the empty path.
    NSString* filePath = [string length] == 0 ? @"." : string;
    return pathOf([[NSURL fileURLWithPath:filePath] URLByStandardizingPath]).value_or(Text());
  }
}

Text MacPathStandardizer::standardizedPath(const Text& path) const {
  @autoreleasepool {
    NSString* standardized = [foundationString(path) stringByStandardizingPath];
    return utf8Of(standardized).value_or(path.utf8());
  }
}

std::vector<Text> MacPathStandardizer::pathsStandardizedTo(const Text& path) const {
  // Foundation removes these prefixes if the remaining path exists.
  return {path, "/private" + path.utf8(), "/var/automount" + path.utf8(),
          "/private/var/automount" + path.utf8()};
}

}  // namespace velmora
