#include "platform/macos/MacSharedDefaults.h"

#include "platform/macos/FoundationText.h"
#include "platform/macos/ObjectHolder.h"

namespace velmora {

std::optional<Text> MacSharedDefaults::string(std::string_view suiteName,
                                              std::string_view key) const {
  @autoreleasepool {
    const auto suite = ObjectHolder<NSUserDefaults>::adopting(
        [[NSUserDefaults alloc] initWithSuiteName:foundationString(suiteName)]);
    return utf8Of([suite.get() stringForKey:foundationString(key)]);
  }
}

}  // namespace velmora
