#include "platform/macos/MacLogger.h"

#include "platform/macos/ExceptionBarrier.h"
#include "platform/macos/FoundationText.h"

namespace velmora {

void MacLogger::log(std::string_view line) noexcept {
  attempt([line] {
    @autoreleasepool {
      NSString* format = [readableString(line) stringByReplacingOccurrencesOfString:@"%"
                                                                         withString:@"%%"];
      // The line is the format, without arguments, as the log has always shown it; a folder's name
      // in it cannot be taken for a conversion, because no "%" is left single.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wformat-security"
#pragma clang diagnostic ignored "-Wformat-nonliteral"
      NSLog(format);
#pragma clang diagnostic pop
    }
  });
}

}  // namespace velmora
