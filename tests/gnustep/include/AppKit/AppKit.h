// GNUstep's AppKit, and the declarations of Apple's that it lacks and the products use. Tests
// answer their calls by SharedObjects.h.
#pragma once

#include_next <AppKit/AppKit.h>

@class NSRunningApplication;

/// Both properties are initially YES, as in Apple's class.
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
