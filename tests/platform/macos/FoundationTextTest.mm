#include "platform/macos/FoundationText.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace velmora {
namespace {

TEST(FoundationTextTest, convertsTextBothWaysUnchanged) {
  for (const std::string text : {"", "plain", "100%", "復元 e\u0301 \u00e9", "\U0001F4C1"}) {
    EXPECT_EQ(utf8Of(foundationString(text)), text);
    EXPECT_EQ(utf8Of(readableString(text)), text);
  }
  const std::string withNUL("a\0b", 3);
  EXPECT_EQ(utf8Of(foundationString(withNUL)), withNUL);
}

TEST(FoundationTextTest, leavesStringsToTheAutoreleasePool) {
  @autoreleasepool {
    EXPECT_EQ([foundationString("a text of some length") retainCount], 1U);
    EXPECT_EQ([readableString("a text of some length\xff") retainCount], 1U);
  }
}

TEST(FoundationTextTest, returnsNoStringForBytesThatAreNotUTF8) {
  for (const char* bytes : {"\xff", "a\xc3", "\xed\xa0\x80"}) {
    EXPECT_EQ(foundationString(bytes), nil);
  }
}

TEST(FoundationTextTest, convertsAnyBytesForDisplay) {
  EXPECT_EQ(utf8Of(readableString("Jos\xe9")), "Jos\u00e9");
}

TEST(FoundationTextTest, returnsNoUTF8ForNilOrAnUnpairedSurrogate) {
  const unichar halfAPair = 0xD800;
  EXPECT_EQ(utf8Of(nil), std::nullopt);
  EXPECT_EQ(utf8Of([NSString stringWithCharacters:&halfAPair length:1]), std::nullopt);
}

TEST(FoundationTextTest, returnsThePathOfAFileURL) {
  EXPECT_EQ(pathOf([NSURL URLWithString:@"file:///a%20b/c"]), Text("/a b/c"));
  EXPECT_EQ(pathOf(nil), std::nullopt);
}

}  // namespace
}  // namespace velmora
