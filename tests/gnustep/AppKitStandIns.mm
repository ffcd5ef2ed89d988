// Implements the declarations of include/AppKit/AppKit.h.

#include "tests/gnustep/SharedObjects.h"
#include "tests/gnustep/Strings.h"

#import <AppKit/AppKit.h>

@implementation NSWorkspaceOpenConfiguration

+ (instancetype)configuration {
  return [[[self alloc] init] autorelease];
}

- (instancetype)init {
  self = [super init];
  if (self != nil) {
    _activates = YES;
    _addsToRecentItems = YES;
  }
  return self;
}

- (id)copyWithZone:(NSZone*)zone {
  return NSCopyObject(self, 0, zone);
}

- (BOOL)activates {
  return _activates;
}

- (void)setActivates:(BOOL)activates {
  _activates = activates;
}

- (BOOL)addsToRecentItems {
  return _addsToRecentItems;
}

- (void)setAddsToRecentItems:(BOOL)addsToRecentItems {
  _addsToRecentItems = addsToRecentItems;
}

@end

@implementation NSWorkspace (AppleLaunching)

- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier {
  const auto& applications = velmora::sharedObjects().applications;
  const auto application = applications.find(velmora::utf8(bundleIdentifier));
  return application == applications.end()
             ? nil
             : [NSURL fileURLWithPath:velmora::nsString(application->second)];
}

- (void)openApplicationAtURL:(NSURL*)applicationURL
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:
               (void (^)(NSRunningApplication* app, NSError* error))completionHandler {
  velmora::sharedObjects().openedApplications.push_back(
      {.url = velmora::utf8([applicationURL absoluteString]),
       .activates = [configuration activates] == YES,
       .addsToRecentItems = [configuration addsToRecentItems] == YES,
       .hasCompletionHandler = completionHandler != nil});
}

@end

// The category replaces a method of the class on purpose.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

@interface NSWorkspace (Shared)
@end

@implementation NSWorkspace (Shared)

/// GNUstep's method looks for applications, writes caches, and starts the daemon of the distributed
/// notifications.
+ (NSWorkspace*)sharedWorkspace {
  static NSWorkspace* const workspace = NSAllocateObject([NSWorkspace class], 0, nullptr);
  return workspace;
}

@end

#pragma clang diagnostic pop

@implementation NSViewController (AppleExtensionRequestHandling)

- (void)beginRequestWithExtensionContext:(NSExtensionContext*)context {
  velmora::sharedObjects().begunRequests += context == nil ? 0 : 1;
}

@end
