#include "extension/VelmoraFinderActionExtension.h"

#include "extension/RequestFlow.h"
#include "macos/MacPlatform.h"
#include "platform/macos/ExceptionBarrier.h"
#include "platform/macos/MacExtensionContext.h"

#import <AppKit/AppKit.h>

#include <memory>

namespace velmora {

namespace {

/// A request and the platform that serves it, with one lifetime. The request needs nothing from the
/// controller that began it, because the host may release the controller earlier.
struct HostRequest {
  explicit HostRequest(NSExtensionContext* host) : context(host) {}

  MacPlatform platform;
  MacExtensionContext context;
};

void serve(NSExtensionContext* host) {
  const auto request = std::make_shared<HostRequest>(host);
  const VelmoraFinderActionExtension extension(request->platform.references());
  extension.beginRequestWithExtensionContext(
      std::shared_ptr<ExtensionContext>(request, &request->context));
}

void cancel(NSExtensionContext* host) {
  MacExtensionContext context(host);
  cancelWithoutMessage(context);
}

}  // namespace

}  // namespace velmora

/// The principal class. The extension host creates an instance by the name of the class.
@interface VelmoraFinderActionExtension : NSViewController
@end

@implementation VelmoraFinderActionExtension

- (instancetype)initWithNibName:(NSString*)nibName bundle:(NSBundle*)nibBundle {
  return [super initWithNibName:nibName bundle:nibBundle];
}

- (instancetype)initWithCoder:(NSCoder*)coder {
  return [super initWithCoder:coder];
}

- (void)loadView {
  NSView* emptyView = [[NSView alloc] initWithFrame:NSZeroRect];
  [self setView:emptyView];
  [emptyView release];
}

- (void)beginRequestWithExtensionContext:(NSExtensionContext*)context {
  [super beginRequestWithExtensionContext:context];
  @autoreleasepool {
    const velmora::AttemptResult result = velmora::attempt([context] { velmora::serve(context); });
    if (result != velmora::AttemptResult::succeeded) {
      velmora::cancel(context);
    }
  }
}

@end
