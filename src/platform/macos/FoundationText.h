// Texts on their way into Foundation and out of it. For Objective-C++ only.
#pragma once

#include "text/Text.h"

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// An autoreleased string; nil when `utf8` is not UTF-8.
[[nodiscard]] NSString* foundationString(std::string_view utf8);

/// The same for people to read, and never nil: bytes that are not UTF-8 are shown one by one, as
/// the characters of ISO 8859-1.
[[nodiscard]] NSString* readableString(std::string_view utf8);

/// The bytes of a string. None for nil, and for a string with half a surrogate pair in it, which
/// has no UTF-8 form.
[[nodiscard]] std::optional<std::string> utf8Of(NSString* string);

/// The path of a file URL; none where it has none.
[[nodiscard]] std::optional<Text> pathOf(NSURL* url);

}  // namespace velmora
