// GNUstep's Foundation, and what the products ask of Apple's that it lacks. Who answers in tests:
// SharedObjects.h.
#pragma once

#include_next <Foundation/Foundation.h>

@interface NSFileManager (AppleLocations)

- (NSURL*)containerURLForSecurityApplicationGroupIdentifier:(NSString*)groupIdentifier;

- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory
                   inDomains:(NSSearchPathDomainMask)domainMask;

@end

@interface NSUserDefaults (AppleSuites)

/// nil for the global domain and for the main bundle's own identifier. Otherwise every question
/// reads the domain `suiteName` afresh, and a number is returned as text where text is asked for.
/// For reading only.
- (instancetype)initWithSuiteName:(NSString*)suiteName;

@end

@interface NSURL (AppleDataRepresentation)

/// Raises an exception when there are no bytes at all: what Apple's makes of that is not known.
+ (NSURL*)absoluteURLWithDataRepresentation:(NSData*)data relativeToURL:(NSURL*)baseURL;

@end

// What item providers deliver conforms to it.

@interface NSString (AppleSecureCoding) <NSSecureCoding>
@end

@interface NSURL (AppleSecureCoding) <NSSecureCoding>
@end

@interface NSData (AppleSecureCoding) <NSSecureCoding>
@end
