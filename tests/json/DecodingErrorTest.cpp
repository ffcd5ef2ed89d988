#include "json/DecodingError.h"

#include <gtest/gtest.h>

namespace velmora::internal {
namespace {

TEST(DecodingErrorTest, kindsHaveNames) {
  EXPECT_EQ(name(DecodingErrorKind::keyNotFound), "keyNotFound");
  EXPECT_EQ(name(DecodingErrorKind::valueNotFound), "valueNotFound");
  EXPECT_EQ(name(DecodingErrorKind::typeMismatch), "typeMismatch");
  EXPECT_EQ(name(DecodingErrorKind::dataCorrupted), "dataCorrupted");
}

TEST(DecodingErrorTest, codingPathGrowsAtTheFront) {
  DecodingError error(DecodingErrorKind::typeMismatch, "wrong", 7);
  EXPECT_TRUE(error.codingPath().empty());
  error.prependToCodingPath("name");
  error.prependToCodingPath(std::size_t{3});
  error.prependToCodingPath("entries");
  EXPECT_EQ(error.codingPath(), (std::vector<CodingKey>{"entries", std::size_t{3}, "name"}));
}

TEST(DecodingErrorTest, keepsTheValuesOfItsConstruction) {
  const DecodingError error(DecodingErrorKind::valueNotFound, "nothing there", 7);
  EXPECT_EQ(error.kind(), DecodingErrorKind::valueNotFound);
  EXPECT_STREQ(error.what(), "nothing there");
  EXPECT_EQ(error.byteOffset(), 7U);
  EXPECT_EQ(DecodingError(DecodingErrorKind::dataCorrupted, "", std::nullopt).byteOffset(),
            std::nullopt);
}

}  // namespace
}  // namespace velmora::internal
