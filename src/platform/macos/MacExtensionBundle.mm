#include "platform/macos/MacExtensionBundle.h"

#include "platform/macos/FoundationText.h"
#include "platform/macos/ObjectHolder.h"

#include <utility>

namespace velmora {

namespace {

class MacLocalizationFolder final : public LocalizationFolder {
 public:
  explicit MacLocalizationFolder(ObjectHolder<NSBundle> folder) : folder_(std::move(folder)) {}

  std::string localizedString(std::string_view key, std::string_view value) const override {
    @autoreleasepool {
      NSString* text = [folder_.get() localizedStringForKey:foundationString(key)
                                                      value:foundationString(value)
                                                      table:nil];
      return utf8Of(text).value_or(std::string(value));
    }
  }

 private:
  ObjectHolder<NSBundle> folder_;
};

}  // namespace

std::optional<Text> MacExtensionBundle::bundleIdentifier() const {
  @autoreleasepool {
    return utf8Of([[NSBundle mainBundle] bundleIdentifier]);
  }
}

std::unique_ptr<LocalizationFolder> MacExtensionBundle::localizationFolder(
    std::string_view language) const {
  @autoreleasepool {
    NSString* path = [[NSBundle mainBundle] pathForResource:foundationString(language)
                                                     ofType:@"lproj"];
    if (path == nil) {
      return nullptr;
    }
    auto folder = ObjectHolder<NSBundle>::adopting([[NSBundle alloc] initWithPath:path]);
    if (folder.get() == nil) {
      return nullptr;
    }
    return std::make_unique<MacLocalizationFolder>(std::move(folder));
  }
}

}  // namespace velmora
