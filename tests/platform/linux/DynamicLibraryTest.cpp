#include "platform/PlatformError.h"
#include "platform/linux/DynamicLibrary.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace velmora {
namespace {

/// The message of the error when `function` is not found in `library`. Its code must be ELIBACC.
std::string loadingError(const char* library, const char* function) {
  try {
    static_cast<void>(DynamicLibrary(library).function(function));
    return "none";
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.domain(), posixErrorDomain);
    EXPECT_EQ(error.code(), ELIBACC);
    return error.what();
  }
}

TEST(DynamicLibraryTest, findsAFunctionOfTheLibraryAndOfADependency) {
  const DynamicLibrary library("libm.so.6");
  double (*const squareRoot)(double) = library.function("sqrt");
  EXPECT_EQ(squareRoot(9), 3);
  void (*const release)(void*) = DynamicLibrary("libgio-2.0.so.0").function("g_free");
  release(nullptr);
}

TEST(DynamicLibraryTest, namesTheMissingLibraryOrFunction) {
  const std::string library = loadingError("libnone.so.7", "sqrt");
  EXPECT_TRUE(library.starts_with("libnone.so.7: ")) << library;
  const std::string function = loadingError("libm.so.6", "nought");
  EXPECT_TRUE(function.ends_with("undefined symbol: nought")) << function;
}

}  // namespace
}  // namespace velmora
