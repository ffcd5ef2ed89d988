#include "platform/macos/MacExtensionBundle.h"
#include "tests/contracts/ExtensionBundleContract.h"
#include "tests/platform/macos/MethodReplacement.h"
#include "tests/platform/macos/ScratchBundle.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {
namespace {

class MacBundleAdapter {
 public:
  const ExtensionBundle& bundle() { return bundle_; }
  void identifyAs(const std::optional<std::string>& identifier) { files_.identifyAs(identifier); }
  void localize(std::string_view language, const std::map<std::string, std::string>& texts) {
    files_.localize(language, texts);
  }
  void localizeUnusably(std::string_view language) {
    files_.writeStrings(language, "\"key\" = \"text\"; and nonsense");
  }

 private:
  ScratchBundle files_;
  MacExtensionBundle bundle_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, ExtensionBundleContract, MacBundleAdapter);

id refuseNoPath(id, SEL, NSString* path) {
  if (path == nil) {
    [NSException raise:NSInvalidArgumentException format:@"a bundle without a path"];
  }
  return nil;
}

TEST(MacExtensionBundleTest, returnsNoFolderWithoutAPath) {
  const ScratchBundle files;
  const MethodReplacement asApple(
      class_getInstanceMethod([NSBundle class], @selector(initWithPath:)), refuseNoPath);
  EXPECT_EQ(MacExtensionBundle().localizationFolder("ja"), nullptr);
}

TEST(MacExtensionBundleTest, retainsNoBundle) {
  ScratchBundle files;
  files.localize("ja", {{"key", "text"}});
  @autoreleasepool {
    NSBundle* folder = [NSBundle bundleWithPath:[[NSBundle mainBundle] pathForResource:@"ja"
                                                                                ofType:@"lproj"]];
    const NSUInteger ownerCount = [folder retainCount];
    EXPECT_NE(MacExtensionBundle().localizationFolder("ja"), nullptr);
    EXPECT_EQ([folder retainCount], ownerCount);
  }
}

}  // namespace
}  // namespace velmora
