#include "tests/gnustep/ProcessEnvironment.h"
#include "tests/gnustep/SharedObjects.h"
#include "tests/gnustep/Strings.h"
#include "tests/support/Process.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace velmora {
namespace {

class FoundationStandInsTest : public testing::Test {
 private:
  NSAutoreleasePool* const pool_ = [[NSAutoreleasePool alloc] init];

 protected:
  ~FoundationStandInsTest() override { [pool_ release]; }

  NSFileManager* const manager = [NSFileManager defaultManager];

  std::vector<std::string> paths(NSArray* urls) {
    std::vector<std::string> result;
    for (NSURL* url in urls) {
      result.push_back(utf8([url path]));
    }
    return result;
  }
};

TEST_F(FoundationStandInsTest, groupContainersAreThoseOfTheProgramsGroups) {
  sharedObjects().groupContainers["group.one"] = "/Group Containers/one";
  EXPECT_EQ(utf8([[manager containerURLForSecurityApplicationGroupIdentifier:@"group.one"] path]),
            "/Group Containers/one");
  EXPECT_TRUE([manager containerURLForSecurityApplicationGroupIdentifier:@"group.two"] == nil);
}

TEST_F(FoundationStandInsTest, onlyApplicationSupportOfTheUserIsFound) {
  sharedObjects().applicationSupportDirectories = {"/Support", "/More support"};
  EXPECT_EQ(paths([manager URLsForDirectory:NSApplicationSupportDirectory
                                  inDomains:NSUserDomainMask]),
            (std::vector<std::string>{"/Support", "/More support"}));
  EXPECT_EQ(paths([manager URLsForDirectory:NSApplicationSupportDirectory
                                  inDomains:NSAllDomainsMask]),
            std::vector<std::string>());
  EXPECT_EQ(paths([manager URLsForDirectory:NSLibraryDirectory inDomains:NSUserDomainMask]),
            std::vector<std::string>());
}

TEST_F(FoundationStandInsTest, urlsAreMadeFromTheirDataRepresentation) {
  NSData* const absolute = [@"file:///folder%20one/" dataUsingEncoding:NSUTF8StringEncoding];
  EXPECT_EQ(utf8([[NSURL absoluteURLWithDataRepresentation:absolute
                                             relativeToURL:nil] absoluteString]),
            "file:///folder%20one/");
  NSData* const relative = [@"name" dataUsingEncoding:NSUTF8StringEncoding];
  EXPECT_EQ(utf8([[NSURL absoluteURLWithDataRepresentation:relative
                                             relativeToURL:[NSURL URLWithString:@"file:///folder/"]]
                absoluteString]),
            "file:///folder/name");
}

class SuiteTest : public FoundationStandInsTest {
 protected:
  ~SuiteTest() override { std::filesystem::remove_all(domains()); }

  static std::filesystem::path domains() { return utf8(GSDefaultsRootForUser(nil)); }

  NSUserDefaults* open(NSString* name) {
    return [[[NSUserDefaults alloc] initWithSuiteName:name] autorelease];
  }

  /// Writes as another process does, with the tool for it.
  static void write(const std::string& domain, const std::string& key, const std::string& value) {
    const process::Outcome outcome =
        process::run({.arguments = {"defaults", "write", domain, key, value},
                      .environment = gnustepEnvironment(),
                      .input = {}});
    ASSERT_EQ(outcome.exitStatus, 0) << outcome.error;
  }

  /// Writes the whole file of a domain, as another program might.
  static void writeFile(const std::string& domain, const std::string& content) {
    std::filesystem::create_directories(domains());
    std::ofstream(domains() / (domain + ".plist")) << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                                      "<plist version=\"0.9\"><dict>"
                                                   << content << "</dict></plist>\n";
  }
};

TEST_F(SuiteTest, findsAValueThatAnotherProcessStored) {
  write("group.suite", "language", "ja");
  EXPECT_EQ(utf8([open(@"group.suite") stringForKey:@"language"]), "ja");
  EXPECT_TRUE([open(@"group.suite") stringForKey:@"other"] == nil);
  EXPECT_TRUE([open(@"group.other") stringForKey:@"language"] == nil);
}

TEST_F(SuiteTest, isReadAgainAtEveryCall) {
  NSUserDefaults* const suite = open(@"group.fresh");
  EXPECT_TRUE([suite stringForKey:@"language"] == nil);
  for (const char* language : {"ja", "es", "en"}) {
    writeFile("group.fresh", "<key>language</key><string>" + std::string(language) + "</string>");
    EXPECT_EQ(utf8([suite stringForKey:@"language"]), language);
  }
}

TEST_F(SuiteTest, stringsAreReadFromNumbersButNotFromOtherObjects) {
  writeFile("group.numbers", "<key>number</key><integer>5</integer><key>list</key><array></array>");
  EXPECT_EQ(utf8([open(@"group.numbers") stringForKey:@"number"]), "5");
  EXPECT_TRUE([open(@"group.numbers") stringForKey:@"list"] == nil);
}

TEST_F(SuiteTest, globalDomainIsNoSuite) { EXPECT_TRUE(open(NSGlobalDomain) == nil); }

}  // namespace
}  // namespace velmora
