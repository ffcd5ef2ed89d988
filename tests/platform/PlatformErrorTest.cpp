#include "platform/PlatformError.h"
#include "tests/support/RowName.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <ostream>
#include <string>

namespace velmora {
namespace {

struct ErrorCase {
  std::string name;
  PlatformError error;
  std::string domain;
  int code;
  std::string description;
};

std::ostream& operator<<(std::ostream& out, const ErrorCase& row) { return out << row.name; }

class KnownError : public testing::TestWithParam<ErrorCase> {};

TEST_P(KnownError, saysWhatAndNoMore) {
  EXPECT_EQ(GetParam().error.domain(), GetParam().domain);
  EXPECT_EQ(GetParam().error.code(), GetParam().code);
  EXPECT_EQ(GetParam().error.what(), GetParam().description);
  EXPECT_EQ(GetParam().error.native(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Table, KnownError,
    testing::Values(ErrorCase{"ofTheSystem", posixError(EFBIG), "NSPOSIXErrorDomain", EFBIG,
                              std::strerror(EFBIG)},
                    ErrorCase{"missingFile", noSuchFileError(), "NSCocoaErrorDomain", 4,
                              "The file doesn’t exist."},
                    ErrorCase{"corruptFile", corruptFileError(), "NSCocoaErrorDomain", 259,
                              "The file isn’t in the correct format."}),
    RowName());

}  // namespace
}  // namespace velmora
