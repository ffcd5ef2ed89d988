#include "platform/macos/MacNotificationCenter.h"

#include "platform/macos/ExceptionBarrier.h"
#include "platform/macos/FoundationText.h"

namespace velmora {

void MacNotificationCenter::post(std::string_view name) noexcept {
  attempt([name] {
    @autoreleasepool {
      [[NSDistributedNotificationCenter defaultCenter] postNotificationName:foundationString(name)
                                                                     object:nil
                                                                   userInfo:nil
                                                         deliverImmediately:YES];
    }
  });
}

}  // namespace velmora
