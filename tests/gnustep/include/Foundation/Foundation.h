// GNUstep's Foundation, and the declarations of Apple's that it lacks and the products use. Tests
// answer their calls by SharedObjects.h.
#pragma once

#include_next <Foundation/Foundation.h>

@interface NSFileManager (AppleLocations)

- (NSURL*)containerURLForSecurityApplicationGroupIdentifier:(NSString*)groupIdentifier;

- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory
                   inDomains:(NSSearchPathDomainMask)domainMask;

@end

@interface NSUserDefaults (AppleSuites)

/// Returns nil for the global domain and for the main bundle's own identifier. Every call reads the
/// domain `suiteName` again, and stringForKey: returns a number as text. For reading only.
- (instancetype)initWithSuiteName:(NSString*)suiteName;

@end

@interface NSURL (AppleDataRepresentation)

/// Raises an exception for empty data, because Apple's result for it is not known.
+ (NSURL*)absoluteURLWithDataRepresentation:(NSData*)data relativeToURL:(NSURL*)baseURL;

@end

// Item providers deliver objects of these classes.

@interface NSString (AppleSecureCoding) <NSSecureCoding>
@end

@interface NSURL (AppleSecureCoding) <NSSecureCoding>
@end

@interface NSData (AppleSecureCoding) <NSSecureCoding>
@end
