#import "tests/gnustep/RecordingExtensionContext.h"
#import "tests/gnustep/ScriptedItemProvider.h"
#include "tests/gnustep/Strings.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <memory>
#include <optional>
#include <thread>

namespace velmora {
namespace {

class RecordingExtensionContextTest : public testing::Test {
 protected:
  RecordingExtensionContextTest()
      : context([[RecordingExtensionContext alloc] initWithInputItems:@[]]),
        record([context record]) {}
  ~RecordingExtensionContextTest() override { [context release]; }

  RecordingExtensionContext* context;
  std::shared_ptr<const ContextRecord> record;
};

TEST_F(RecordingExtensionContextTest, aRequestThatWasNotEndedHasNoRecord) {
  EXPECT_TRUE(record->completions().empty());
  EXPECT_TRUE(record->cancellations().empty());
  EXPECT_FALSE(record->deallocated());
}

TEST_F(RecordingExtensionContextTest, completionsAreRecordedWithTheirArguments) {
  [context completeRequestReturningItems:@[] completionHandler:nil];
  [context completeRequestReturningItems:@[ @"item" ]
                       completionHandler:^(BOOL){
                       }];
  [context completeRequestReturningItems:nil completionHandler:nil];
  const auto completions = record->completions();
  ASSERT_EQ(completions.size(), 3U);
  EXPECT_EQ(completions[0].itemCount, 0U);
  EXPECT_FALSE(completions[0].hasCompletionHandler);
  EXPECT_EQ(completions[1].itemCount, 1U);
  EXPECT_TRUE(completions[1].hasCompletionHandler);
  EXPECT_EQ(completions[2].itemCount, std::nullopt);
  EXPECT_EQ(completions[0].thread, std::this_thread::get_id());
  EXPECT_TRUE(record->cancellations().empty());
}

TEST_F(RecordingExtensionContextTest, cancellationsAreRecordedWithTheWholeError) {
  @autoreleasepool {
    [context
        cancelRequestWithError:[NSError
                                   errorWithDomain:@"domain"
                                              code:2
                                          userInfo:@{NSLocalizedDescriptionKey : @"sentence"}]];
    [context cancelRequestWithError:nil];
  }
  const auto cancellations = record->cancellations();
  ASSERT_EQ(cancellations.size(), 2U);
  EXPECT_EQ(cancellations[0].error,
            (RecordedError{.domain = "domain",
                           .code = 2,
                           .userInfo = {{utf8(NSLocalizedDescriptionKey), "sentence"}}}));
  EXPECT_EQ(cancellations[1].error, std::nullopt);
  EXPECT_TRUE(record->completions().empty());
}

TEST_F(RecordingExtensionContextTest, endsAreRecordedWithTheirThread) {
  std::thread::id other;
  std::thread([this, &other] {
    other = std::this_thread::get_id();
    @autoreleasepool {
      [context completeRequestReturningItems:@[] completionHandler:nil];
    }
  }).join();
  ASSERT_EQ(record->completions().size(), 1U);
  EXPECT_EQ(record->completions()[0].thread, other);
}

TEST_F(RecordingExtensionContextTest, recordReportsTheReleaseByTheLastOwner) {
  [context retain];
  [context release];
  EXPECT_FALSE(record->deallocated());
  [context release];
  EXPECT_TRUE(record->deallocated());
  context = nil;
}

TEST_F(RecordingExtensionContextTest, requestReleasesItsItemsAndTheirAttachments) {
  auto* provider = [[ScriptedItemProvider alloc] initWithTypes:{} script:{}];
  const auto providerRecord = [provider record];
  @autoreleasepool {
    auto* item = [[[NSExtensionItem alloc] init] autorelease];
    [item setAttachments:@[ provider ]];
    [provider release];
    [context setInputItems:@[ item ]];
  }
  EXPECT_FALSE(providerRecord->deallocated());
  [context release];
  context = nil;
  EXPECT_TRUE(providerRecord->deallocated());
}

}  // namespace
}  // namespace velmora
