#include "platform/macos/MacPreferredLanguages.h"

#include "platform/macos/FoundationText.h"

namespace velmora {

std::vector<Text> MacPreferredLanguages::preferredLanguages() const {
  @autoreleasepool {
    std::vector<Text> languages;
    for (NSString* language in [NSLocale preferredLanguages]) {
      if (std::optional<std::string> tag = utf8Of(language)) {
        languages.emplace_back(*std::move(tag));
      }
    }
    return languages;
  }
}

}  // namespace velmora
