// The declarations of Apple's AppKit that the products use; see Foundation/Foundation.h.
#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@class NSRunningApplication;

typedef NSString* NSNibName;

@interface NSResponder : NSObject <NSCoding>
@end

@interface NSView : NSResponder
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
@end

@interface NSViewController : NSResponder
- (instancetype)initWithNibName:(nullable NSNibName)nibNameOrNil
                         bundle:(nullable NSBundle*)nibBundleOrNil NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
- (void)setView:(NSView*)view;
- (void)loadView;
@end

@interface NSViewController (NSExtensionAdditions) <NSExtensionRequestHandling>
@end

@interface NSWorkspaceOpenConfiguration : NSObject <NSCopying>
+ (instancetype)configuration;
- (void)setAddsToRecentItems:(BOOL)addsToRecentItems;
- (void)setActivates:(BOOL)activates;
@end

@interface NSWorkspace : NSObject
+ (NSWorkspace*)sharedWorkspace;
- (nullable NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier;
- (void)openApplicationAtURL:(NSURL*)applicationURL
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^_Nullable)(NSRunningApplication* _Nullable app,
                                                NSError* _Nullable error))completionHandler;
@end

#pragma clang assume_nonnull end
