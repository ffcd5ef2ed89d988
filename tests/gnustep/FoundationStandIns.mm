// Implements the declarations of include/Foundation/Foundation.h.

#include "tests/gnustep/SharedObjects.h"
#include "tests/gnustep/Strings.h"

#import <Foundation/Foundation.h>

@implementation NSFileManager (AppleLocations)

- (NSURL*)containerURLForSecurityApplicationGroupIdentifier:(NSString*)groupIdentifier {
  const auto& containers = velmora::sharedObjects().groupContainers;
  const auto container = containers.find(velmora::utf8(groupIdentifier));
  return container == containers.end()
             ? nil
             : [NSURL fileURLWithPath:velmora::nsString(container->second)];
}

- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory
                   inDomains:(NSSearchPathDomainMask)domainMask {
  NSMutableArray* urls = [NSMutableArray array];
  if (directory == NSApplicationSupportDirectory && domainMask == NSUserDomainMask) {
    for (const std::string& path : velmora::sharedObjects().applicationSupportDirectories) {
      [urls addObject:[NSURL fileURLWithPath:velmora::nsString(path)]];
    }
  }
  return urls;
}

@end

/// Reads a fresh copy of the domain each time. GNUstep's defaults compare time stamps, and miss
/// changes within the resolution of a time stamp.
@interface SuiteDefaults : NSUserDefaults {
 @private
  NSString* domainName;
}
- (instancetype)initWithDomain:(NSString*)domain;
@end

@implementation SuiteDefaults

- (instancetype)initWithDomain:(NSString*)domain {
  self = [super init];
  if (self != nil) {
    domainName = [domain copy];
  }
  return self;
}

- (void)dealloc {
  [domainName release];
  [super dealloc];
}

- (id)objectForKey:(NSString*)defaultName {
  NSUserDefaults* fresh = [[NSUserDefaults alloc] init];
  [fresh addSuiteNamed:domainName];
  [fresh synchronize];
  id object = [[fresh objectForKey:defaultName] retain];
  [fresh release];
  return [object autorelease];
}

- (NSString*)stringForKey:(NSString*)defaultName {
  id object = [self objectForKey:defaultName];
  if ([object isKindOfClass:[NSNumber class]]) {
    return [object stringValue];
  }
  return [object isKindOfClass:[NSString class]] ? object : nil;
}

@end

@implementation NSUserDefaults (AppleSuites)

- (instancetype)initWithSuiteName:(NSString*)suiteName {
  [self release];
  if ([suiteName isEqualToString:NSGlobalDomain] ||
      [suiteName isEqualToString:[[NSBundle mainBundle] bundleIdentifier]]) {
    return nil;
  }
  return [[SuiteDefaults alloc] initWithDomain:suiteName];
}

@end

@implementation NSURL (AppleDataRepresentation)

+ (NSURL*)absoluteURLWithDataRepresentation:(NSData*)data relativeToURL:(NSURL*)baseURL {
  if ([data length] == 0) {
    [NSException raise:NSInvalidArgumentException format:@"a URL is made from no bytes"];
  }
  NSString* text = [[NSString alloc] initWithData:data encoding:NSUTF8StringEncoding];
  if (text == nil) {
    text = [[NSString alloc] initWithData:data encoding:NSISOLatin1StringEncoding];
  }
  NSURL* url = [[NSURL URLWithString:text relativeToURL:baseURL] absoluteURL];
  [text release];
  return url;
}

@end

@implementation NSString (AppleSecureCoding)

+ (BOOL)supportsSecureCoding {
  return YES;
}

@end

@implementation NSURL (AppleSecureCoding)

+ (BOOL)supportsSecureCoding {
  return YES;
}

@end

@implementation NSData (AppleSecureCoding)

+ (BOOL)supportsSecureCoding {
  return YES;
}

@end

// GNUstep's classes never release their members. With these methods, tests see whether the product
// releases a request.

@interface NSExtensionItem (Release)
@end

@implementation NSExtensionItem (Release)

- (void)dealloc {
  [self setAttributedTitle:nil];
  [self setAttributedContentText:nil];
  [self setAttachments:nil];
  [self setUserInfo:nil];
  [super dealloc];
}

@end

@interface NSExtensionContext (Release)
@end

@implementation NSExtensionContext (Release)

- (void)dealloc {
  [self setInputItems:nil];
  [super dealloc];
}

@end
