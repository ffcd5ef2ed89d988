#include "platform/macos/MacSharedLocations.h"

#include "platform/macos/FoundationText.h"

namespace velmora {

std::optional<Text> MacSharedLocations::groupContainer(std::string_view groupIdentifier) const {
  @autoreleasepool {
    return pathOf([[NSFileManager defaultManager]
        containerURLForSecurityApplicationGroupIdentifier:foundationString(groupIdentifier)]);
  }
}

std::vector<Text> MacSharedLocations::applicationSupportDirectories() const {
  @autoreleasepool {
    NSArray* urls = [[NSFileManager defaultManager] URLsForDirectory:NSApplicationSupportDirectory
                                                           inDomains:NSUserDomainMask];
    std::vector<Text> directories;
    for (NSURL* url in urls) {
      if (std::optional<Text> path = pathOf(url)) {
        directories.push_back(*std::move(path));
      }
    }
    return directories;
  }
}

}  // namespace velmora
