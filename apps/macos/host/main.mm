// Replaces the Velmora application when the extensions are tried by hand. The program stays in the
// Dock. At its start and at each notification, it logs the request files that it finds, and does
// not remove them. The log appears in the Console if an extension started the program, or in the
// terminal from which it was started.
#import <AppKit/AppKit.h>

namespace {

/// The directories in which the extensions may have written requests: in the group's container, and
/// in the user's Application Support.
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
  // By default, the system delays notifications while an application is in the background.
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
