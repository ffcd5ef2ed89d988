// Declares NSItemProvider with Apple's completion handler, because GNUstep's handler gets a pointer
// to the error.
//
// Replaces GNUstep's own header by its include guard. This is a declaration only, because the
// library's class would win over a second definition. The library's initialisers return nil. So the
// only instances are those of subclasses that initialise themselves (ScriptedItemProvider.h).
// Superclass and instance variables must be the library's, because the compiler builds them into
// subclasses.
#ifndef _NSItemProvider_h_GNUSTEP_BASE_INCLUDE
#define _NSItemProvider_h_GNUSTEP_BASE_INCLUDE

#import <Foundation/NSObject.h>

@class NSArray, NSDictionary, NSError, NSString;

typedef void (^NSItemProviderCompletionHandler)(id<NSSecureCoding> item, NSError* error);

@interface NSItemProvider : NSObject <NSCopying>

- (NSArray*)registeredTypeIdentifiers;

- (BOOL)hasItemConformingToTypeIdentifier:(NSString*)typeIdentifier;

- (void)loadItemForTypeIdentifier:(NSString*)typeIdentifier
                          options:(NSDictionary*)options
                completionHandler:(NSItemProviderCompletionHandler)completionHandler;

@end

#endif
