#include "platform/macos/MacLogger.h"

#include "platform/macos/ExceptionBarrier.h"
#include "platform/macos/FoundationText.h"

namespace velmora {

void MacLogger::log(std::string_view line) noexcept {
  attempt([line] {
    @autoreleasepool {
      NSString* format = [readableString(line) stringByReplacingOccurrencesOfString:@"%"
                                                                         withString:@"%%"];
      // The line is the format string, without arguments, as the log has always shown it. A
      // folder's name in the line cannot act as a conversion, because each "%" is doubled.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wformat-security"
#pragma clang diagnostic ignored "-Wformat-nonliteral"
      NSLog(format);
#pragma clang diagnostic pop
    }
  });
}

}  // namespace velmora
