#include "platform/PlatformError.h"
#include "platform/linux/DynamicLibrary.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <string>

namespace velmora {
namespace {

/// The error that `action` raises, which has to have ELIBACC.
std::string loadingError(const std::function<void()>& action) {
  try {
    action();
    return "none";
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.domain(), posixErrorDomain);
    EXPECT_EQ(error.code(), ELIBACC);
    return error.what();
  }
}

TEST(DynamicLibraryTest, findsAFunction) {
  const DynamicLibrary library("libm.so.6");
  double (*const squareRoot)(double) = library.function("sqrt");
  EXPECT_EQ(squareRoot(9), 3);
}

TEST(DynamicLibraryTest, findsAFunctionOfALibraryBelow) {
  void (*const release)(void*) = DynamicLibrary("libgio-2.0.so.0").function("g_free");
  release(nullptr);
}

TEST(DynamicLibraryTest, namesTheLibraryThatIsMissing) {
  const std::string error = loadingError([] { const DynamicLibrary library("libnone.so.7"); });
  EXPECT_TRUE(error.starts_with("libnone.so.7: ")) << error;
}

TEST(DynamicLibraryTest, namesTheFunctionThatIsMissing) {
  const DynamicLibrary library("libm.so.6");
  const std::string error = loadingError([&] { static_cast<void>(library.function("nought")); });
  EXPECT_TRUE(error.ends_with("undefined symbol: nought")) << error;
}

}  // namespace
}  // namespace velmora
