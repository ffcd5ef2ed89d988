// The error code of an operation on files.
#pragma once

#include "platform/PlatformError.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstring>
#include <string>

namespace velmora {

/// The code of the system's error that `operation` raises; 0 without an error.
template <std::invocable Operation>
int errorCodeOf(Operation operation) {
  try {
    static_cast<void>(operation());
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.domain(), posixErrorDomain);
    EXPECT_EQ(error.what(), std::string(std::strerror(error.code())));
    return error.code();
  }
  return 0;
}

}  // namespace velmora
