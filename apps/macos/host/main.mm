// Takes the place of the Velmora application, to try the extensions by hand: stays in the Dock and
// logs the request files that it finds, at its start and at each notification. Leaves them where
// they are. Started by an extension, its log is in the Console; started in a terminal, there.
#import <AppKit/AppKit.h>

namespace {

/// Where the extensions may have left requests: the group's container, or else the user's.
NSArray* handoffDirectories() {
  NSFileManager* manager = [NSFileManager defaultManager];
  NSMutableArray* directories = [NSMutableArray array];
  NSURL* container =
      [manager containerURLForSecurityApplicationGroupIdentifier:@"group.io.tolvane.Velmora"];
  if (container != nil) {
    [directories addObject:[[container path] stringByAppendingPathComponent:@"Warp/FinderHandoff"]];
  }
  for (NSURL* support in [manager URLsForDirectory:NSApplicationSupportDirectory
                                         inDomains:NSUserDomainMask]) {
    [directories
        addObject:[[support path] stringByAppendingPathComponent:@"Velmora/Warp/FinderHandoff"]];
  }
  return directories;
}

}  // namespace

@interface RequestPrinter : NSObject <NSApplicationDelegate>
@end

@implementation RequestPrinter

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  // At once even in the background, where notifications are held back otherwise.
  [[NSDistributedNotificationCenter defaultCenter]
             addObserver:self
                selector:@selector(printRequests:)
                    name:@"io.tolvane.Velmora.finderHandoff"
                  object:nil
      suspensionBehavior:NSNotificationSuspensionBehaviorDeliverImmediately];
  [self printRequests:notification];
}

- (void)printRequests:(NSNotification*)notification {
  NSLog(@"%@", [notification name]);
  for (NSString* directory in handoffDirectories()) {
    NSArray* names = [[NSFileManager defaultManager] contentsOfDirectoryAtPath:directory
                                                                         error:nullptr];
    NSLog(@"%@: %lu request files", directory, static_cast<unsigned long>([names count]));
    for (NSString* name in names) {
      NSString* path = [directory stringByAppendingPathComponent:name];
      NSLog(@"%@\n%@", name,
            [NSString stringWithContentsOfFile:path encoding:NSUTF8StringEncoding error:nullptr]);
    }
  }
}

@end

int main() {
  @autoreleasepool {
    NSApplication* application = [NSApplication sharedApplication];
    RequestPrinter* printer = [[RequestPrinter alloc] init];
    [application setDelegate:printer];
    [application run];
    [printer release];
  }
}
