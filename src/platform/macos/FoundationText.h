// Converts texts to strings of Foundation and back. For Objective-C++ only.
#pragma once

#include "text/Text.h"

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// An autoreleased string; nil when `utf8` is not UTF-8.
[[nodiscard]] NSString* foundationString(std::string_view utf8);

/// The same for people to read, and never nil: if `utf8` is not UTF-8, each of its bytes is shown
/// as a character of ISO 8859-1.
[[nodiscard]] NSString* readableString(std::string_view utf8);

/// The UTF-8 form of a string. None for nil, and for a string with an unpaired surrogate, which has
/// no UTF-8 form.
[[nodiscard]] std::optional<std::string> utf8Of(NSString* string);

/// The path of a file URL; none when it has no path.
[[nodiscard]] std::optional<Text> pathOf(NSURL* url);

}  // namespace velmora
