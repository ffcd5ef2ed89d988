// GNUstep's AppKit, and what the products ask of Apple's that it lacks. Who answers in tests:
// SharedObjects.h.
#pragma once

#include_next <AppKit/AppKit.h>

@class NSRunningApplication;

/// What it is made with is Apple's: both are on.
@interface NSWorkspaceOpenConfiguration : NSObject <NSCopying> {
 @private
  BOOL _activates;
  BOOL _addsToRecentItems;
}

+ (instancetype)configuration;

- (BOOL)activates;
- (void)setActivates:(BOOL)activates;

- (BOOL)addsToRecentItems;
- (void)setAddsToRecentItems:(BOOL)addsToRecentItems;

@end

@interface NSWorkspace (AppleLaunching)

- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier;

/// Never calls the completion handler.
- (void)openApplicationAtURL:(NSURL*)applicationURL
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication* app, NSError* error))completionHandler;

@end

@interface NSViewController (AppleExtensionRequestHandling) <NSExtensionRequestHandling>

- (void)beginRequestWithExtensionContext:(NSExtensionContext*)context;

@end
