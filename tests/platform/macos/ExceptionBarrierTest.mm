#include "platform/macos/ExceptionBarrier.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <new>
#include <stdexcept>

namespace velmora {
namespace {

TEST(ExceptionBarrierTest, runsAnOperationToItsEnd) {
  int runs = 0;
  EXPECT_EQ(attempt([&runs] { ++runs; }), AttemptResult::succeeded);
  EXPECT_EQ(runs, 1);
}

TEST(ExceptionBarrierTest, stopsCPlusPlusExceptions) {
  int runs = 0;
  EXPECT_EQ(attempt([&runs] {
              ++runs;
              throw std::bad_alloc();
            }),
            AttemptResult::ranOutOfMemory);
  EXPECT_EQ(attempt([&runs] {
              ++runs;
              throw 1;
            }),
            AttemptResult::failed);
  EXPECT_EQ(runs, 2);
}

TEST(ExceptionBarrierTest, stopsObjectiveCExceptions) {
  EXPECT_EQ(attempt([] { [NSException raise:NSGenericException format:@"raised"]; }),
            AttemptResult::failed);
  EXPECT_EQ(attempt([] {
              @autoreleasepool {
                [[NSArray array] objectAtIndex:1];
              }
            }),
            AttemptResult::failed);
}

TEST(ExceptionBarrierTest, releasesTheObjectsOfTheOperation) {
  struct Held {
    explicit Held(int& held) : count(held) { ++count; }
    ~Held() { --count; }
    int& count;
  };
  int held = 0;
  EXPECT_EQ(attempt([&held] {
              const Held thrownPast(held);
              throw std::runtime_error("thrown");
            }),
            AttemptResult::failed);
  EXPECT_EQ(attempt([&held] {
              const Held raisedPast(held);
              [NSException raise:NSGenericException format:@"raised"];
            }),
            AttemptResult::failed);
  EXPECT_EQ(held, 0);
}

}  // namespace
}  // namespace velmora
