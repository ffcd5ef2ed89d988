// notification_observer NAME...: prints the notifications that it receives (NotificationProtocol.h)
// until its standard input ends.

#include "tests/gnustep/NotificationProtocol.h"
#include "tests/gnustep/Strings.h"

#import <Foundation/Foundation.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <thread>

namespace {

std::string field(NSObject* object) {
  if (object == nil) {
    return {};
  }
  std::string text = velmora::presentField + velmora::utf8([object description]);
  std::ranges::replace_if(
      text, [](unsigned char character) { return character < ' '; }, ' ');
  return text;
}

}  // namespace

@interface Observer : NSObject
- (void)receive:(NSNotification*)notification;
- (void)receiveFence:(NSNotification*)notification;
@end

@implementation Observer

- (void)receive:(NSNotification*)notification {
  std::cout << velmora::observerReceived << '\t' << velmora::utf8([notification name]) << '\t'
            << field([notification object]) << '\t' << field([notification userInfo]) << std::endl;
}

- (void)receiveFence:(NSNotification*)notification {
  std::cout << velmora::observerFence << '\t' << velmora::utf8([notification object]) << std::endl;
}

@end

int main(int argc, char** argv) {
  // The end of the starting process closes standard input, which ends this process.
  std::thread([] {
    char byte = 0;
    while (::read(STDIN_FILENO, &byte, 1) > 0) {
    }
    ::_exit(0);
  }).detach();
  @autoreleasepool {
    Observer* const observer = [[Observer alloc] init];
    NSDistributedNotificationCenter* const center = static_cast<NSDistributedNotificationCenter*>(
        [NSDistributedNotificationCenter defaultCenter]);
    for (int index = 1; index < argc; ++index) {
      [center addObserver:observer
                 selector:@selector(receive:)
                     name:velmora::nsString(argv[index])
                   object:nil];
    }
    [center addObserver:observer
               selector:@selector(receiveFence:)
                   name:velmora::nsString(velmora::fenceNotification)
                 object:nil];
    std::cout << velmora::observerReady << std::endl;
    [[NSRunLoop currentRunLoop] run];
  }
}
