// Serves a request of the host again and again, each time with another of its memory allocations
// failing: C++ must not throw into the host, and the request must end.

#include "tests/support/FailingAllocations.h"
#include "tests/apps/macos/HostSession.h"
#include "tests/gnustep/SharedObjects.h"

#include <gtest/gtest.h>

#import <AppKit/AppKit.h>
#include <pthread.h>

#include <string>
#include <string_view>

/// Counts how it was ended, and allocates nothing in C++ for that.
@interface CountingContext : NSExtensionContext {
 @private
  int completions;
  int cancellations;
  long lastErrorCode;
}
- (int)completionCount;
- (int)cancellationCount;
- (long)lastCode;
@end

@implementation CountingContext

- (int)completionCount {
  return completions;
}

- (int)cancellationCount {
  return cancellations;
}

- (long)lastCode {
  return lastErrorCode;
}

- (void)completeRequestReturningItems:(NSArray*)items
                    completionHandler:(void (^)(BOOL expired))completionHandler {
  completions += items != nil && completionHandler == nil ? 1 : 0;
}

- (void)cancelRequestWithError:(NSError*)error {
  ++cancellations;
  lastErrorCode = [error code];
}

@end

/// Delivers a URL on another thread, where nobody is above to catch anything, and allocates nothing
/// in C++ for that. Waits for the thread, so that every run allocates in the same order.
@interface PlainItemProvider : NSItemProvider {
 @private
  NSURL* deliveredURL;
}
- (instancetype)initWithURL:(NSURL*)url;
@end

namespace {

struct Delivery {
  NSItemProviderCompletionHandler handler;
  NSURL* url;
};

void* deliver(void* argument) {
  const Delivery& delivery = *static_cast<Delivery*>(argument);
  @autoreleasepool {
    delivery.handler(delivery.url, nil);
  }
  return nullptr;
}

}  // namespace

@implementation PlainItemProvider

- (instancetype)initWithURL:(NSURL*)url {
  deliveredURL = [url retain];
  return self;
}

- (void)dealloc {
  [deliveredURL release];
  [super dealloc];
}

- (BOOL)hasItemConformingToTypeIdentifier:(NSString*)typeIdentifier {
  return [typeIdentifier isEqualToString:@"public.file-url"];
}

- (void)loadItemForTypeIdentifier:(NSString*)typeIdentifier
                          options:(NSDictionary*)options
                completionHandler:(NSItemProviderCompletionHandler)completionHandler {
  if (typeIdentifier == nil || options != nil) {
    return;
  }
  Delivery delivery = {.handler = completionHandler, .url = deliveredURL};
  pthread_t thread = {};
  pthread_create(&thread, nullptr, deliver, &delivery);
  pthread_join(thread, nullptr);
}

@end

namespace velmora {
namespace {

int loggedLineCount = 0;

/// In the place of the one that keeps the lines: it would need memory within the log's own lock.
void countLine(NSString*) { ++loggedLineCount; }

class FailingAllocations : public testing::TestWithParam<MemoryShortage> {
 protected:
  FailingAllocations() { _NSLog_printf_handler = countLine; }
  ~FailingAllocations() override {
    letAllocationsSucceed();
    _NSLog_printf_handler = handler_;
  }

  /// Whether the request was served without reaching the failing allocation.
  bool serve(long successfulAllocations) {
    @autoreleasepool {
      loggedLineCount = 0;
      const std::size_t earlierRequests = host_.requests().size();
      CountingContext* context = [[[CountingContext alloc] init] autorelease];
      [context setInputItems:selection()];
      NSViewController* extension = [[[NSClassFromString(@"VelmoraFinderActionExtension") alloc]
          initWithNibName:nil
                   bundle:nil] autorelease];
      failAllocations(successfulAllocations, GetParam());
      [extension beginRequestWithExtensionContext:context];
      runMainQueue();
      const bool wasServed = !letAllocationsSucceed();
      expectOneEnd(context, host_.requests().size() - earlierRequests);
      expectWholeSelectionInRequests();
      return wasServed;
    }
  }

 private:
  NSArray* selection() {
    NSExtensionItem* item = [[[NSExtensionItem alloc] init] autorelease];
    [item setAttachments:@[ provider("a folder with a long name"), provider("a second folder") ]];
    return @[ item ];
  }

  NSItemProvider* provider(std::string_view folder) {
    const std::string path = host_.makeFolder(folder);
    NSString* string = [NSString stringWithUTF8String:path.c_str()];
    return [[[PlainItemProvider alloc] initWithURL:[NSURL fileURLWithPath:string]] autorelease];
  }

  static void expectOneEnd(CountingContext* context, std::size_t requestCount) {
    EXPECT_EQ([context completionCount] + [context cancellationCount], 1);
    EXPECT_EQ(requestCount, static_cast<std::size_t>([context completionCount]));
    if ([context cancellationCount] == 1) {
      EXPECT_EQ([context lastCode], 2);
      EXPECT_LE(loggedLineCount, 1);
    }
  }

  /// A folder that memory ran out for must not be left behind.
  void expectWholeSelectionInRequests() {
    for (const std::string& request : host_.requests()) {
      EXPECT_NE(request.find("a folder with a long name"), std::string::npos);
      EXPECT_NE(request.find("a second folder"), std::string::npos);
    }
  }

  HostSession host_;
  NSLog_printf_handler* handler_ = _NSLog_printf_handler;
};

TEST_P(FailingAllocations, endTheRequestOnceWithTheHandoffError) {
  long allocationCount = 0;
  while (!serve(allocationCount) && !HasFailure()) {
    ++allocationCount;
  }
  EXPECT_GT(allocationCount, 20);
}

INSTANTIATE_TEST_SUITE_P(OnceOrForGood, FailingAllocations,
                         testing::Values(MemoryShortage::once, MemoryShortage::forGood));

}  // namespace
}  // namespace velmora
