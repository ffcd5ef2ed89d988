#include "platform/macos/FoundationText.h"
#include "platform/macos/MacPreferredLanguages.h"
#include "platform/macos/ObjectHolder.h"
#include "tests/contracts/PreferredLanguagesContract.h"
#include "tests/platform/macos/MethodReplacement.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

/// The answer of the replaced method. A global, because the method gets no other state.
NSArray* languagesOfTheSystem = nil;

id preferredLanguages(id, SEL) { return languagesOfTheSystem; }

/// Replaces the settings of the system, because GNUstep adds English to every list.
class MacLanguagesAdapter {
 public:
  MacLanguagesAdapter() = default;
  MacLanguagesAdapter(const MacLanguagesAdapter&) = delete;
  MacLanguagesAdapter& operator=(const MacLanguagesAdapter&) = delete;
  ~MacLanguagesAdapter() { set(nil); }

  const PreferredLanguages& languages() { return languages_; }

  void prefer(const std::vector<std::string>& tags) {
    NSMutableArray* array = [[NSMutableArray alloc] init];
    for (const std::string& tag : tags) {
      [array addObject:foundationString(tag)];
    }
    set(array);
  }

 private:
  static void set(NSArray* languages) {
    [languagesOfTheSystem release];
    languagesOfTheSystem = languages;
  }

  MacPreferredLanguages languages_;
  MethodReplacement replacement_ {
    class_getClassMethod([NSLocale class], @selector(preferredLanguages)), preferredLanguages
  };
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, PreferredLanguagesContract, MacLanguagesAdapter);

TEST(MacPreferredLanguagesTest, asksTheSystem) {
  @autoreleasepool {
    NSArray* ofTheSystem = [NSLocale preferredLanguages];
    const std::vector<Text> tags = MacPreferredLanguages().preferredLanguages();
    ASSERT_GT(tags.size(), 0U);
    ASSERT_EQ(tags.size(), [ofTheSystem count]);
    EXPECT_EQ(tags.front(), utf8Of([ofTheSystem objectAtIndex:0]));
  }
}

}  // namespace
}  // namespace velmora
