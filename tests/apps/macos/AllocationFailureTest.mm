// Serves a request of the host while memory runs out: C++ must not throw into the host, and the
// request must end.

#include "tests/apps/macos/HostSession.h"
#include "tests/gnustep/SharedObjects.h"
#include "tests/support/FailingAllocations.h"

#include <gtest/gtest.h>

#import <AppKit/AppKit.h>
#include <pthread.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Counts the ends of the request. Allocates nothing in C++.
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

/// Delivers a URL on another thread, which has no caller that could catch an exception. Allocates
/// nothing in C++. Waits for the thread, so that every run allocates in the same order.
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

/// Replaces the handler that keeps the lines, because that one allocates while it holds the log's
/// lock.
void countLine(NSString*) { ++loggedLineCount; }

/// A request for two existing folders, and the extension that serves it.
class Request {
 public:
  explicit Request(HostSession& host) : earlierRequests_(host.requests().size()) {
    loggedLineCount = 0;
    NSExtensionItem* item = [[[NSExtensionItem alloc] init] autorelease];
    [item setAttachments:@[
      provider(host, "a folder with a long name"), provider(host, "a second folder")
    ]];
    [context_ setInputItems:@[ item ]];
  }
  Request(const Request&) = delete;
  Request& operator=(const Request&) = delete;
  ~Request() {
    _NSLog_printf_handler = handler_;
    [pool_ drain];
  }

  void serve() {
    [extension_ beginRequestWithExtensionContext:context_];
    runMainQueue();
  }

  void expectOneEnd(HostSession& host) const {
    EXPECT_EQ([context_ completionCount] + [context_ cancellationCount], 1);
    const std::vector<std::string> requests = host.requests();
    EXPECT_EQ(requests.size() - earlierRequests_,
              static_cast<std::size_t>([context_ completionCount]));
    if ([context_ cancellationCount] == 1) {
      EXPECT_EQ([context_ lastCode], 2);
      EXPECT_LE(loggedLineCount, 1);
    }
    // A request must not lack a folder because memory ran out.
    for (const std::string& request : requests) {
      EXPECT_NE(request.find("a folder with a long name"), std::string::npos);
      EXPECT_NE(request.find("a second folder"), std::string::npos);
    }
  }

 private:
  static NSItemProvider* provider(HostSession& host, std::string_view folder) {
    const std::string path = host.makeFolder(folder);
    NSString* string = [NSString stringWithUTF8String:path.c_str()];
    return [[[PlainItemProvider alloc] initWithURL:[NSURL fileURLWithPath:string]] autorelease];
  }

  NSLog_printf_handler* handler_ = std::exchange(_NSLog_printf_handler, countLine);
  NSAutoreleasePool* pool_ = [[NSAutoreleasePool alloc] init];
  std::size_t earlierRequests_;
  CountingContext* context_ = [[[CountingContext alloc] init] autorelease];
  NSViewController* extension_ = [[[NSClassFromString(@"VelmoraFinderActionExtension") alloc]
      initWithNibName:nil
               bundle:nil] autorelease];
};

TEST(FailingAllocations, endTheRequestOnceWithTheHandoffError) {
  HostSession host;
  const long allocationCount =
      failEachAllocation([&] { return Request(host); }, [](Request& request) { request.serve(); },
                         [&](const Request& request, const Attempt& attempt) {
                           EXPECT_FALSE(attempt.hasThrown);
                           request.expectOneEnd(host);
                         });
  EXPECT_GT(allocationCount, 20);
}

}  // namespace
}  // namespace velmora
