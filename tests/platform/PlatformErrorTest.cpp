#include "platform/PlatformError.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>

namespace velmora {
namespace {

TEST(PlatformErrors, haveDomainCodeAndDescription) {
  const struct {
    PlatformError error;
    std::string domain;
    int code;
    std::string description;
  } rows[] = {
      {posixError(EFBIG), "NSPOSIXErrorDomain", EFBIG, std::strerror(EFBIG)},
      {noSuchFileError(), "NSCocoaErrorDomain", 4, "The file doesn’t exist."},
      {corruptFileError(), "NSCocoaErrorDomain", 259, "The file isn’t in the correct format."},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.description);
    EXPECT_EQ(row.error.domain(), row.domain);
    EXPECT_EQ(row.error.code(), row.code);
    EXPECT_EQ(row.error.what(), row.description);
    EXPECT_EQ(row.error.native(), nullptr);
  }
}

TEST(PlatformErrors, sayThatNothingExists) {
  for (const int code : {ENOENT, ENOTDIR}) {
    EXPECT_TRUE(isNoSuchFile(posixError(code))) << code;
  }
  for (const int code : {EACCES, ELOOP, EIO, ENAMETOOLONG, EISDIR}) {
    EXPECT_FALSE(isNoSuchFile(posixError(code))) << code;
  }
  EXPECT_FALSE(isNoSuchFile({"domain", ENOENT, ""}));
}

}  // namespace
}  // namespace velmora
