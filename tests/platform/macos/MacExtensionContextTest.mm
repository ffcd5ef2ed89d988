#include "platform/macos/MacExtensionContext.h"
#include "tests/contracts/ExtensionHostContract.h"
#include "tests/gnustep/RecordingExtensionContext.h"
#include "tests/gnustep/ScriptedItemProvider.h"
#include "tests/gnustep/Strings.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// An extension host that raises an exception in every call.
@interface RaisingExtensionContext : NSExtensionContext {
 @private
  int calls;
}
- (int)callCount;
@end

@implementation RaisingExtensionContext

- (int)callCount {
  return calls;
}

- (void)completeRequestReturningItems:(NSArray*)items
                    completionHandler:(void (^)(BOOL expired))completionHandler {
  ++calls;
  [NSException raise:NSGenericException format:@"%@ %d", items, completionHandler != nil];
}

- (void)cancelRequestWithError:(NSError*)error {
  ++calls;
  [NSException raise:NSGenericException format:@"%@", error];
}

@end

namespace velmora {
namespace {

std::string descriptionKey() { return utf8(NSLocalizedDescriptionKey); }

ScriptedItemProvider* providerOfPath(NSString* path) {
  return
      [[[ScriptedItemProvider alloc] initWithTypes:{"public.file-url"}
                                            script:[path](NSItemProviderCompletionHandler handler) {
                                              handler([NSURL fileURLWithPath:path], nil);
                                            }] autorelease];
}

NSExtensionItem* itemWith(NSArray* attachments) {
  NSExtensionItem* item = [[[NSExtensionItem alloc] init] autorelease];
  [item setAttachments:attachments];
  return item;
}

RecordingExtensionContext* hostWith(NSArray* inputItems) {
  return [[[RecordingExtensionContext alloc] initWithInputItems:inputItems] autorelease];
}

class MacHostAdapter {
 public:
  MacHostAdapter() {
    @autoreleasepool {
      RecordingExtensionContext* host =
          hostWith(@[ itemWith(@[ providerOfPath(@"/a") ]), itemWith(@[ providerOfPath(@"/b") ]) ]);
      record_ = [host record];
      context_.emplace(host);
    }
  }

  ExtensionContext& context() { return *context_; }

  int endCount() const {
    return static_cast<int>(record_->completions().size() + record_->cancellations().size());
  }

  std::optional<RequestError> error() const {
    const std::vector<RecordedCancellation> cancellations = record_->cancellations();
    if (cancellations.empty()) {
      return std::nullopt;
    }
    const RecordedError error = cancellations.at(0).error.value();
    EXPECT_EQ(error.userInfo.size(), 1U);
    return RequestError{.domain = error.domain,
                        .code = static_cast<int>(error.code),
                        .localizedDescription = error.userInfo.at(descriptionKey())};
  }

 private:
  std::shared_ptr<const ContextRecord> record_;
  std::optional<MacExtensionContext> context_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, ExtensionHostContract, MacHostAdapter);

/// The number of attachments of each input item. std::nullopt is a missing list, and -1 a foreign
/// object.
std::vector<std::optional<int>> attachmentCounts(const ExtensionContext& context) {
  std::vector<std::optional<int>> counts;
  for (const InputItem& inputItem : context.inputItems()) {
    const auto* item = std::get_if<ExtensionItem>(&inputItem);
    if (item == nullptr) {
      counts.emplace_back(-1);
    } else if (!item->attachments) {
      counts.emplace_back();
    } else {
      counts.emplace_back(static_cast<int>(item->attachments->size()));
    }
  }
  return counts;
}

TEST(MacExtensionContextTest, distinguishesForeignObjectsAndMissingAttachments) {
  @autoreleasepool {
    NSExtensionItem* withoutAttachments = [[[NSExtensionItem alloc] init] autorelease];
    const MacExtensionContext context(hostWith(@[
      @"junk", withoutAttachments, itemWith(@[]), [NSNull null],
      itemWith(@[ providerOfPath(@"/a"), @"no provider", providerOfPath(@"/b") ])
    ]));
    EXPECT_EQ(attachmentCounts(context),
              (std::vector<std::optional<int>>{-1, std::nullopt, 0, -1, 2}));
  }
}

TEST(MacExtensionContextTest, mayHaveNoInputItems) {
  @autoreleasepool {
    EXPECT_TRUE(MacExtensionContext(hostWith(@[])).inputItems().empty());
    EXPECT_TRUE(MacExtensionContext(hostWith(nil)).inputItems().empty());
  }
}

TEST(MacExtensionContextTest, completesWithAnEmptyListAndNoHandler) {
  @autoreleasepool {
    RecordingExtensionContext* host = hostWith(@[]);
    MacExtensionContext(host).completeRequest();
    ASSERT_EQ([host record]->completions().size(), 1U);
    EXPECT_EQ([host record]->completions().at(0).itemCount, 0U);
    EXPECT_FALSE([host record]->completions().at(0).hasCompletionHandler);
  }
}

TEST(MacExtensionContextTest, cancelsWithAnErrorThatIsNeverMissing) {
  @autoreleasepool {
    RecordingExtensionContext* host = hostWith(@[]);
    MacExtensionContext context(host);
    context.cancelRequest({.domain = "d", .code = 1, .localizedDescription = "Jos\xe9 100%"});
    context.cancelRequest({.code = 2});
    const std::vector<RecordedCancellation> cancellations = [host record]->cancellations();
    ASSERT_EQ(cancellations.size(), 2U);
    EXPECT_EQ(cancellations.at(0).error,
              (RecordedError{"d", 1, {{descriptionKey(), "Jos\u00e9 100%"}}}));
    EXPECT_EQ(cancellations.at(1).error, (RecordedError{"", 2, {{descriptionKey(), ""}}}));
  }
}

TEST(MacExtensionContextTest, retainsAndReleasesItsHost) {
  std::shared_ptr<const ContextRecord> host;
  std::shared_ptr<const ProviderRecord> provider;
  {
    std::optional<MacExtensionContext> context;
    @autoreleasepool {
      ScriptedItemProvider* attachment = providerOfPath(@"/a");
      provider = [attachment record];
      RecordingExtensionContext* object = hostWith(@[ itemWith(@[ attachment ]) ]);
      host = [object record];
      context.emplace(object);
    }
    EXPECT_FALSE(host->deallocated());
    EXPECT_EQ(context->inputItems().size(), 1U);
  }
  EXPECT_TRUE(host->deallocated());
  EXPECT_TRUE(provider->deallocated());
}

TEST(MacExtensionContextTest, ignoresExceptionsOfTheHost) {
  @autoreleasepool {
    RaisingExtensionContext* host = [[[RaisingExtensionContext alloc] init] autorelease];
    MacExtensionContext context(host);
    context.completeRequest();
    context.cancelRequest({.code = 1});
    EXPECT_EQ([host callCount], 2);
  }
}

}  // namespace
}  // namespace velmora
