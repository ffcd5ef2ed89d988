// NSItemProvider with the completion handler of Apple's: GNUstep's gets a pointer to the error.
//
// In the place of GNUstep's own header, by its include guard. A declaration only: the library has
// the class, its initialisers return nil, and it wins over a second definition. So there are no
// instances but those of subclasses that initialise themselves (ScriptedItemProvider.h). The
// superclass and the lack of instance variables are the library's; they are compiled into whatever
// inherits from the class.
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
