#include "extension/SelectionGathering.h"
#include "platform/macos/MacItemProvider.h"
#include "tests/gnustep/ScriptedItemProvider.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// A URL that names a file by its identity, as the pasteboard has them. GNUstep has no such URLs.
@interface ReferenceURL : NSURL
@end

@interface RaisingURL : NSURL
@end

@implementation RaisingURL

- (NSString*)absoluteString {
  [NSException raise:NSGenericException format:@"no text"];
  return nil;
}

- (NSURL*)filePathURL {
  return self;
}

@end

@implementation ReferenceURL

- (NSURL*)filePathURL {
  return [NSURL fileURLWithPath:@"/a b"];
}

@end

namespace velmora {
namespace {

/// The arguments of a load callback.
struct Delivery {
  LoadedItem item;
  std::optional<PlatformError> error;
};

std::unique_ptr<MacItemProvider> providerOf(LoadScript script) {
  ScriptedItemProvider* scripted = [[ScriptedItemProvider alloc] initWithTypes:{"public.file-url"}
                                                                        script:std::move(script)];
  auto provider = std::make_unique<MacItemProvider>(scripted);
  [scripted release];
  return provider;
}

std::vector<Delivery> deliveriesOf(MacItemProvider& provider) {
  std::vector<Delivery> deliveries;
  provider.loadItem(
      "public.file-url", [&deliveries](const LoadedItem& item, const PlatformError* error) {
        deliveries.push_back(
            {.item = item, .error = error != nullptr ? std::optional(*error) : std::nullopt});
      });
  return deliveries;
}

/// The only delivery of a provider that delivers these.
Delivery delivered(id item, NSError* error) {
  const auto provider =
      providerOf([item, error](NSItemProviderCompletionHandler handler) { handler(item, error); });
  std::vector<Delivery> deliveries = deliveriesOf(*provider);
  EXPECT_EQ(deliveries.size(), 1U);
  return std::move(deliveries.at(0));
}

NSData* dataOf(const std::string& bytes) {
  return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}

TEST(MacItemProviderTest, convertsADeliveredItemToAFileURLIfItIsOne) {
  @autoreleasepool {
    const struct {
      const char* name;
      id item;
      std::optional<FileURL> url;
    } rows[] = {
        {"nothing", nil, std::nullopt},
        {"url", [NSURL fileURLWithPath : @"/a b/100%"], FileURL { "/a b/100%" }},
        {"url with a trailing slash", [NSURL URLWithString : @"file:///a%20b/"],
         FileURL { "/a b/" }},
        {"url relative to another",
         [NSURL URLWithString : @"c" relativeToURL : [NSURL URLWithString:@"file:///a/b"]],
         FileURL { "/a/c" }},
        {"url of the web", [NSURL URLWithString:@"https://a/b"], std::nullopt},
        {"url with an encoded slash", [NSURL URLWithString:@"file:///a%2Fb"], std::nullopt},
        {"data", dataOf("file:///a%20b"), FileURL{"/a b"}},
        {"no data", dataOf(""), std::nullopt},
        {"data of a path", dataOf("/a"), std::nullopt},
        {"data that is no text", dataOf("file:///\xff"), std::nullopt},
        {"string", @"file:///a", std::nullopt},
        {"dictionary", @{@"file:///a" : @"file:///a"}, std::nullopt},
    };
    for (const auto& row : rows) {
      EXPECT_EQ(fileURLFromLoadedItem(delivered(row.item, nil).item), row.url) << row.name;
    }
  }
}

TEST(MacItemProviderTest, resolvesAURLThatNamesNoPath) {
  @autoreleasepool {
    ReferenceURL* reference =
        [[[ReferenceURL alloc] initWithString:@"file:///.file/id=1.2"] autorelease];
    EXPECT_EQ(fileURLFromLoadedItem(delivered(reference, nil).item), FileURL{"/a b"});
  }
}

TEST(MacItemProviderTest, treatsAnItemThatRaisesExceptionsAsUnusable) {
  @autoreleasepool {
    RaisingURL* raising = [[[RaisingURL alloc] initWithString:@"file:///a"] autorelease];
    EXPECT_TRUE(std::holds_alternative<UnusableItem>(delivered(raising, nil).item));
  }
}

TEST(MacItemProviderTest, distinguishesNothingFromAnUnusableItem) {
  @autoreleasepool {
    EXPECT_TRUE(std::holds_alternative<std::monostate>(delivered(nil, nil).item));
    EXPECT_TRUE(std::holds_alternative<UnusableItem>(delivered(@"text", nil).item));
  }
}

TEST(MacItemProviderTest, deliversTheErrorBesideTheItem) {
  @autoreleasepool {
    NSError* error = [NSError errorWithDomain:@"d"
                                         code:-1000
                                     userInfo:@{NSLocalizedDescriptionKey : @"text"}];
    for (id item : {static_cast<id>([NSURL fileURLWithPath:@"/a"]), static_cast<id>(nil)}) {
      const Delivery delivery = delivered(item, error);
      EXPECT_EQ(fileURLFromLoadedItem(delivery.item).has_value(), item != nil);
      ASSERT_TRUE(delivery.error.has_value());
      EXPECT_EQ(delivery.error->domain(), "d");
      EXPECT_EQ(delivery.error->code(), -1000);
      EXPECT_STREQ(delivery.error->what(), "text");
      EXPECT_NE(delivery.error->native(), nullptr);
    }
    EXPECT_FALSE(delivered(nil, nil).error.has_value());
  }
}

TEST(MacItemProviderTest, asksForTheTypeAndForNoOptions) {
  ScriptedItemProvider* scripted =
      [[ScriptedItemProvider alloc] initWithTypes:{"public.file-url", "public.folder"} script:{}];
  MacItemProvider provider(scripted);
  EXPECT_TRUE(provider.hasItemConformingTo("public.file-url"));
  EXPECT_TRUE(provider.hasItemConformingTo("public.folder"));
  EXPECT_FALSE(provider.hasItemConformingTo("public.image"));
  EXPECT_TRUE(deliveriesOf(provider).empty());
  EXPECT_EQ([scripted record]->loads(), (std::vector<RecordedLoad>{{"public.file-url", false}}));
  [scripted release];
}

TEST(MacItemProviderTest, retainsAndReleasesItsProvider) {
  @autoreleasepool {
    ScriptedItemProvider* scripted = [[ScriptedItemProvider alloc] initWithTypes:{} script:{}];
    const auto record = [scripted record];
    {
      const MacItemProvider provider(scripted);
      [scripted release];
      EXPECT_FALSE(record->deallocated());
    }
    EXPECT_TRUE(record->deallocated());
  }
}

TEST(MacItemProviderTest, retainsACallbackAsLongAsTheProviderDoes) {
  @autoreleasepool {
    std::optional<HeldCompletionHandler> held;
    const auto provider =
        providerOf([&held](NSItemProviderCompletionHandler handler) { held.emplace(handler); });
    auto captured = std::make_shared<int>(0);
    const std::weak_ptr<int> watched = captured;
    provider->loadItem("public.file-url",
                       [captured](const LoadedItem&, const PlatformError*) { ++*captured; });
    captured.reset();
    ASSERT_FALSE(watched.expired());
    (*held)(nil, nil);
    EXPECT_EQ(*watched.lock(), 1);
    held.reset();
    EXPECT_TRUE(watched.expired());
  }
}

}  // namespace
}  // namespace velmora
