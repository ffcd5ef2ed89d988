#import "tests/gnustep/ScriptedItemProvider.h"
#include "tests/gnustep/Strings.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace velmora {
namespace {

constexpr const char* fileURL = "public.file-url";

/// Releases the provider at the end, because there is no automatic reference counting.
class Provider {
 public:
  explicit Provider(LoadScript script)
      : object_([[ScriptedItemProvider alloc] initWithTypes:{fileURL} script:std::move(script)]),
        record_([object_ record]) {}
  Provider(const Provider&) = delete;
  Provider& operator=(const Provider&) = delete;
  ~Provider() { [object_ release]; }

  NSItemProvider* get() const { return object_; }
  const ProviderRecord& record() const { return *record_; }

 private:
  ScriptedItemProvider* object_;
  std::shared_ptr<const ProviderRecord> record_;
};

TEST(ScriptedItemProviderTest, conformsToItsTypesOnly) {
  const Provider provider({});
  EXPECT_TRUE([provider.get() hasItemConformingToTypeIdentifier:@"public.file-url"]);
  EXPECT_FALSE([provider.get() hasItemConformingToTypeIdentifier:@"public.url"]);
  EXPECT_EQ([[provider.get() registeredTypeIdentifiers] count], 1U);
}

TEST(ScriptedItemProviderTest, deliversWithinTheCall) {
  const Provider provider(
      [](NSItemProviderCompletionHandler handler) { handler(@"delivered", nil); });
  __block std::string delivered;
  [provider.get() loadItemForTypeIdentifier:@"public.file-url"
                                    options:nil
                          completionHandler:^(id<NSSecureCoding> item, NSError* error) {
                            EXPECT_TRUE(error == nil);
                            delivered = utf8(static_cast<NSString*>(item));
                          }];
  EXPECT_EQ(delivered, "delivered");
}

TEST(ScriptedItemProviderTest, recordsTypesAndOptions) {
  const Provider provider({});
  [provider.get() loadItemForTypeIdentifier:@"public.file-url" options:nil completionHandler:nil];
  [provider.get() loadItemForTypeIdentifier:@"public.url" options:@{} completionHandler:nil];
  EXPECT_EQ(provider.record().loads(),
            (std::vector<RecordedLoad>{{.typeIdentifier = "public.file-url", .hasOptions = false},
                                       {.typeIdentifier = "public.url", .hasOptions = true}}));
}

TEST(ScriptedItemProviderTest, providersCallBackFromTheirThreadsInAChosenOrder) {
  std::vector<HeldCompletionHandler> handlers;
  const Provider first(
      [&](NSItemProviderCompletionHandler handler) { handlers.emplace_back(handler); });
  const Provider second(
      [&](NSItemProviderCompletionHandler handler) { handlers.emplace_back(handler); });
  __block std::vector<std::string> delivered;
  __block std::vector<std::thread::id> threads;
  for (const Provider* provider : {&first, &second}) {
    [provider->get() loadItemForTypeIdentifier:@"public.file-url"
                                       options:nil
                             completionHandler:^(id<NSSecureCoding> item, NSError*) {
                               delivered.push_back(utf8(static_cast<NSString*>(item)));
                               threads.push_back(std::this_thread::get_id());
                             }];
  }
  ASSERT_EQ(handlers.size(), 2U);
  std::thread([&] { handlers[1](@"second", nil); }).join();
  std::thread([&] { handlers[0](@"first", nil); }).join();
  EXPECT_EQ(delivered, (std::vector<std::string>{"second", "first"}));
  ASSERT_EQ(threads.size(), 2U);
  EXPECT_NE(threads[0], std::this_thread::get_id());
}

TEST(ScriptedItemProviderTest, handlerLivesAsLongAsItIsHeld) {
  const auto captured = std::make_shared<int>(0);
  std::optional<HeldCompletionHandler> held;
  {
    const Provider provider(
        [&](NSItemProviderCompletionHandler handler) { held.emplace(handler); });
    const auto capture = captured;
    [provider.get() loadItemForTypeIdentifier:@"public.file-url"
                                      options:nil
                            completionHandler:^(id<NSSecureCoding>, NSError*) {
                              ++*capture;
                            }];
  }
  EXPECT_EQ(captured.use_count(), 2);
  const HeldCompletionHandler copy = *held;
  held.reset();
  copy(nil, nil);
  EXPECT_EQ(*captured, 1);
}

TEST(ScriptedItemProviderTest, releasingAHandlerReleasesItsCaptures) {
  const auto captured = std::make_shared<int>(0);
  {
    const Provider provider([](NSItemProviderCompletionHandler handler) {
      const HeldCompletionHandler held(handler);
      const HeldCompletionHandler copy = held;
      copy(nil, nil);
    });
    const auto capture = captured;
    [provider.get() loadItemForTypeIdentifier:@"public.file-url"
                                      options:nil
                            completionHandler:^(id<NSSecureCoding>, NSError*) {
                              ++*capture;
                            }];
  }
  EXPECT_EQ(*captured, 1);
  EXPECT_EQ(captured.use_count(), 1);
}

TEST(ScriptedItemProviderTest, recordReportsTheReleaseByTheLastOwner) {
  std::shared_ptr<const ProviderRecord> record;
  auto* provider = [[ScriptedItemProvider alloc] init];
  record = [provider record];
  EXPECT_FALSE(record->deallocated());
  [provider release];
  EXPECT_TRUE(record->deallocated());
}

}  // namespace
}  // namespace velmora
