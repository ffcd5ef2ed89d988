// What <Foundation/Foundation.h> of the stand-ins declares.

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

/// Looks into a fresh copy of the domains each time: GNUstep's own tell from time stamps whether
/// there is something new, and miss what was written within their resolution.
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

// GNUstep's classes keep what they hold for ever. Only with these do tests see whether a product
// lets go of a request.

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
