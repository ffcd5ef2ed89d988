// Converts strings between tests and Foundation. For Objective-C++ only.
#pragma once

#import <Foundation/Foundation.h>

#include <string>

namespace velmora {

inline NSString* nsString(const std::string& utf8) {
  return [NSString stringWithUTF8String:utf8.c_str()];
}

/// Empty for nil.
inline std::string utf8(NSString* string) {
  return string == nil ? std::string() : std::string([string UTF8String]);
}

}  // namespace velmora
