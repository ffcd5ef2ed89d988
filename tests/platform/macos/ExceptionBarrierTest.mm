#include "platform/macos/ExceptionBarrier.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <new>
#include <stdexcept>

namespace velmora {
namespace {

TEST(ExceptionBarrierTest, runsAnOperationToItsEnd) {
  int runs = 0;
  EXPECT_TRUE(attempt([&runs] { ++runs; }));
  EXPECT_EQ(runs, 1);
}

TEST(ExceptionBarrierTest, stopsWhatCPlusPlusThrows) {
  int runs = 0;
  EXPECT_FALSE(attempt([&runs] {
    ++runs;
    throw std::bad_alloc();
  }));
  EXPECT_FALSE(attempt([&runs] {
    ++runs;
    throw 1;
  }));
  EXPECT_EQ(runs, 2);
}

TEST(ExceptionBarrierTest, stopsWhatObjectiveCRaises) {
  EXPECT_FALSE(attempt([] { [NSException raise:NSGenericException format:@"raised"]; }));
  EXPECT_FALSE(attempt([] {
    @autoreleasepool {
      [[NSArray array] objectAtIndex:1];
    }
  }));
}

TEST(ExceptionBarrierTest, leavesNothingOfWhatTheOperationHeld) {
  struct Held {
    explicit Held(int& held) : count(held) { ++count; }
    ~Held() { --count; }
    int& count;
  };
  int held = 0;
  EXPECT_FALSE(attempt([&held] {
    const Held thrownPast(held);
    throw std::runtime_error("thrown");
  }));
  EXPECT_FALSE(attempt([&held] {
    const Held raisedPast(held);
    [NSException raise:NSGenericException format:@"raised"];
  }));
  EXPECT_EQ(held, 0);
}

}  // namespace
}  // namespace velmora
