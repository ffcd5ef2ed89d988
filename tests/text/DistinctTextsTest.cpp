#include "tests/support/RowName.h"
#include "text/DistinctTexts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

std::string textOf(std::size_t number) { return "/folder/" + std::to_string(number); }

void addDifferent(DistinctTexts& texts, std::size_t count) {
  for (std::size_t number = 0; number < count; ++number) {
    texts.add(textOf(number));
  }
}

struct PairCase {
  const char* name;
  std::string first;
  std::string second;
  bool areDistinct;
};

class PairsOfTexts : public testing::TestWithParam<PairCase> {};

TEST_P(PairsOfTexts, areDistinctUnlessCanonicallyEqual) {
  DistinctTexts texts;
  texts.add(GetParam().first);
  texts.add(GetParam().second);
  EXPECT_EQ(texts.takeVerdict(), GetParam().areDistinct);
}

INSTANTIATE_TEST_SUITE_P(
    Table, PairsOfTexts,
    testing::Values(PairCase{"equal", "/a/b", "/a/b", false}, PairCase{"empty", "", "", false},
                    PairCase{"composedAndDecomposed", "/\u00e9", "/e\u0301", false},
                    PairCase{"marksInAnotherOrder", "a\u0301\u0323", "a\u0323\u0301", false},
                    PairCase{"hangul", "\uac00", "\u1100\u1161", false},
                    PairCase{"notUTF8", "\xFF", "\xFF", false},
                    PairCase{"others", "/a", "/b", true}, PairCase{"emptyAndNot", "", "/", true},
                    PairCase{"letterCase", "/a", "/A", true},
                    PairCase{"compatible", "\ufb01", "fi", true},
                    PairCase{"oneBeginsTheOther", "/a", "/a/", true},
                    PairCase{"NULBehind", "/a", std::string("/a\0", 3), true},
                    PairCase{"otherBytesThatAreNotUTF8", "\xFF", "\xFE", true}),
    RowName());

class ManyTexts : public testing::TestWithParam<std::size_t> {};

TEST_P(ManyTexts, areDistinctWhenNoneIsThereTwice) {
  DistinctTexts texts;
  addDifferent(texts, GetParam());
  EXPECT_EQ(texts.size(), GetParam());
  EXPECT_TRUE(texts.takeVerdict());
  EXPECT_EQ(texts.size(), 0);
}

TEST_P(ManyTexts, areNotDistinctWhereverOneIsThereAgain) {
  const std::size_t count = GetParam();
  DistinctTexts texts;
  for (const std::size_t twice : {std::size_t{0}, count / 2, count - 1}) {
    for (const std::size_t before : {twice + 1, (twice + 1 + count) / 2, count}) {
      for (std::size_t number = 0; number < count; ++number) {
        if (number == before) {
          texts.add(textOf(twice));
        }
        texts.add(textOf(number));
      }
      if (before == count) {
        texts.add(textOf(twice));
      }
      EXPECT_EQ(texts.size(), count + 1);
      EXPECT_FALSE(texts.takeVerdict()) << twice << " again before " << before;
      EXPECT_EQ(texts.size(), 0);
    }
  }
}

// Around the number from which on they are looked at in groups, and beyond that for most groups.
INSTANTIATE_TEST_SUITE_P(Counts, ManyTexts,
                         testing::Values(1, 2, 1022, 1023, 1024, 1025, 2047, 2048, 5000, 30'000));

TEST(DistinctTextsTest, areFoundTwiceAmongAHundredThousand) {
  constexpr std::size_t count = 100'000;
  DistinctTexts texts;
  addDifferent(texts, count);
  EXPECT_TRUE(texts.takeVerdict());
  texts.add(textOf(count / 3));
  addDifferent(texts, count);
  EXPECT_FALSE(texts.takeVerdict());
}

TEST(DistinctTextsTest, areNoneAtFirstAndAfterwards) {
  DistinctTexts texts;
  EXPECT_TRUE(texts.takeVerdict());
  texts.add("a");
  texts.add("a");
  EXPECT_FALSE(texts.takeVerdict());
  EXPECT_TRUE(texts.takeVerdict());
  texts.add("a");
  EXPECT_TRUE(texts.takeVerdict());
  texts.add("a");
  texts.clear();
  EXPECT_EQ(texts.size(), 0);
  texts.add("a");
  EXPECT_TRUE(texts.takeVerdict());
}

}  // namespace
}  // namespace velmora
