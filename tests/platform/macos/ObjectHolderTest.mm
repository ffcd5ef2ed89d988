#include "platform/macos/ObjectHolder.h"

#include <gtest/gtest.h>

#include <utility>

/// Counts its living instances.
@interface CountedObject : NSObject {
 @private
  int* liveObjects;
}
- (instancetype)initWithCount:(int*)count;
@end

@implementation CountedObject

- (instancetype)initWithCount:(int*)count {
  self = [super init];
  if (self != nil) {
    liveObjects = count;
    ++*liveObjects;
  }
  return self;
}

- (void)dealloc {
  --*liveObjects;
  [super dealloc];
}

@end

namespace velmora {
namespace {

using Holder = ObjectHolder<CountedObject>;

TEST(ObjectHolderTest, releasesWhatItAdopted) {
  int count = 0;
  {
    const auto holder = Holder::adopting([[CountedObject alloc] initWithCount:&count]);
    EXPECT_EQ(count, 1);
    EXPECT_EQ([holder.get() retainCount], 1U);
  }
  EXPECT_EQ(count, 0);
}

TEST(ObjectHolderTest, releasesOnlyItsOwnReference) {
  int count = 0;
  CountedObject* object = [[CountedObject alloc] initWithCount:&count];
  {
    const auto holder = Holder::retaining(object);
    EXPECT_EQ([object retainCount], 2U);
  }
  EXPECT_EQ([object retainCount], 1U);
  [object release];
  EXPECT_EQ(count, 0);
}

TEST(ObjectHolderTest, retainsByCopyAndTransfersByMove) {
  int count = 0;
  {
    auto first = Holder::adopting([[CountedObject alloc] initWithCount:&count]);
    Holder second = first;
    EXPECT_EQ([second.get() retainCount], 2U);
    const Holder third = std::move(first);
    EXPECT_EQ([third.get() retainCount], 2U);
    second = third;
    EXPECT_EQ([third.get() retainCount], 2U);
    second = Holder::adopting([[CountedObject alloc] initWithCount:&count]);
    EXPECT_EQ([third.get() retainCount], 1U);
    EXPECT_EQ(count, 2);
  }
  EXPECT_EQ(count, 0);
}

TEST(ObjectHolderTest, mayHoldNil) {
  const auto none = Holder::retaining(nil);
  const Holder copy = none;
  EXPECT_EQ(copy.get(), nil);
}

}  // namespace
}  // namespace velmora
