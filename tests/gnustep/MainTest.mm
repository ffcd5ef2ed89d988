#include "tests/gnustep/SharedObjects.h"
#include "tests/gnustep/Strings.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

class MainTest : public testing::Test {
 private:
  NSAutoreleasePool* const pool_ = [[NSAutoreleasePool alloc] init];

 protected:
  ~MainTest() override { [pool_ release]; }
};

TEST_F(MainTest, loggedLinesAreRecordedWithoutTheirTimeStamp) {
  NSLog(@"[first] %d] é", 100);
  NSLog(@"second");
  EXPECT_EQ(loggedLines(), (std::vector<std::string>{"[first] 100] é", "second"}));
}

TEST_F(MainTest, nothingIsWrittenIntoTheHomeOfTheUser) {
  NSString* const scratch = NSTemporaryDirectory();
  EXPECT_TRUE([[NSFileManager defaultManager]
      fileExistsAtPath:[scratch stringByAppendingPathComponent:@"GNUstep.conf"]])
      << utf8(scratch);
  NSArray* const libraries =
      NSSearchPathForDirectoriesInDomains(NSLibraryDirectory, NSUserDomainMask, YES);
  for (NSString* directory in [libraries arrayByAddingObject:GSDefaultsRootForUser(nil)]) {
    EXPECT_TRUE([directory hasPrefix:scratch]) << utf8(directory);
  }
}

TEST_F(MainTest, textsFromFilesAreUTF8) {
  EXPECT_EQ([NSString defaultCStringEncoding], NSUTF8StringEncoding);
}

TEST_F(MainTest, notificationsFailBeforeTheTestStartsADaemon) {
  EXPECT_TRUE([NSTask launchPathForTool:@"gdnc"] == nil);
}

}  // namespace
}  // namespace velmora
