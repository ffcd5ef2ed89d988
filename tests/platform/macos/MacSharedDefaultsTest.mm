#include "platform/macos/FoundationText.h"
#include "platform/macos/MacSharedDefaults.h"
#include "tests/contracts/SharedDefaultsContract.h"
#include "tests/platform/macos/ScratchBundle.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <set>
#include <string>
#include <string_view>

namespace velmora {
namespace {

class MacDefaultsAdapter {
 public:
  MacDefaultsAdapter() = default;
  MacDefaultsAdapter(const MacDefaultsAdapter&) = delete;
  MacDefaultsAdapter& operator=(const MacDefaultsAdapter&) = delete;
  ~MacDefaultsAdapter() {
    for (const std::string& suite : suites_) {
      [[NSUserDefaults standardUserDefaults] removePersistentDomainForName:foundationString(suite)];
    }
    [[NSUserDefaults standardUserDefaults] synchronize];
  }

  const SharedDefaults& defaults() { return defaults_; }

  void store(std::string_view suite, std::string_view key, std::string_view value) {
    storeObject(suite, key, foundationString(value));
  }

  void storeObject(std::string_view suite, std::string_view key, id value) {
    suites_.insert(std::string(suite));
    [[NSUserDefaults standardUserDefaults] setPersistentDomain:@{foundationString(key) : value}
                                                       forName:foundationString(suite)];
    [[NSUserDefaults standardUserDefaults] synchronize];
  }

  /// A program cannot open its own settings as a suite.
  void makeUnusable(std::string_view suite) { bundle_.identifyAs(std::string(suite)); }

 private:
  ScratchBundle bundle_;
  MacSharedDefaults defaults_;
  std::set<std::string> suites_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, SharedDefaultsContract, MacDefaultsAdapter);

TEST(MacSharedDefaultsTest, readsANumberAsItsTextAndNothingElse) {
  MacDefaultsAdapter adapter;
  adapter.storeObject("group.org.example", "Key.v1", @4);
  EXPECT_EQ(adapter.defaults().string("group.org.example", "Key.v1"), Text("4"));
  adapter.storeObject("group.org.example", "Key.v1", @[ @"ja" ]);
  EXPECT_EQ(adapter.defaults().string("group.org.example", "Key.v1"), std::nullopt);
}

TEST(MacSharedDefaultsTest, releasesTheSuite) {
  GSDebugAllocationActive(YES);
  Class suites = NSClassFromString(@"SuiteDefaults");
  ASSERT_NE(suites, Nil);
  const int before = GSDebugAllocationCount(suites);
  EXPECT_EQ(MacSharedDefaults().string("group.org.example", "Key.v1"), std::nullopt);
  EXPECT_GT(GSDebugAllocationTotal(suites), before);
  EXPECT_EQ(GSDebugAllocationCount(suites), before);
  GSDebugAllocationActive(NO);
}

}  // namespace
}  // namespace velmora
