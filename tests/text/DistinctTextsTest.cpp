#include "tests/text/TextPairs.h"
#include "text/DistinctTexts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace velmora {
namespace {

std::string textOf(std::size_t number) { return "/folder/" + std::to_string(number); }

void addDifferent(DistinctTexts& texts, std::size_t count) {
  for (std::size_t number = 0; number < count; ++number) {
    texts.add(textOf(number));
  }
}

TEST(DistinctTextsTest, areDistinctUnlessCanonicallyEqual) {
  for (const TextPair& row : textPairs) {
    SCOPED_TRACE(row.name);
    DistinctTexts texts;
    texts.add(row.a);
    texts.add(row.b);
    EXPECT_EQ(texts.takeVerdict(), !row.areEqual);
  }
}

// Around the number from which on they are looked at in groups, and beyond that for most groups.
constexpr std::size_t counts[] = {1, 2, 1022, 1023, 1024, 1025, 2047, 2048, 5000, 30'000};

TEST(DistinctTextsTest, areDistinctWhenNoneIsThereTwice) {
  for (const std::size_t count : counts) {
    SCOPED_TRACE(count);
    DistinctTexts texts;
    addDifferent(texts, count);
    EXPECT_EQ(texts.size(), count);
    EXPECT_TRUE(texts.takeVerdict());
    EXPECT_EQ(texts.size(), 0);
  }
}

void expectTwice(std::size_t count, std::size_t twice, std::size_t before, DistinctTexts& texts) {
  for (std::size_t number = 0; number <= count; ++number) {
    if (number == before) {
      texts.add(textOf(twice));
    }
    if (number < count) {
      texts.add(textOf(number));
    }
  }
  EXPECT_EQ(texts.size(), count + 1);
  EXPECT_FALSE(texts.takeVerdict()) << twice << " again before " << before;
  EXPECT_EQ(texts.size(), 0);
}

TEST(DistinctTextsTest, areNotDistinctWhereverOneIsThereAgain) {
  for (const std::size_t count : counts) {
    SCOPED_TRACE(count);
    DistinctTexts texts;
    for (const std::size_t twice : {std::size_t{0}, count / 2, count - 1}) {
      for (const std::size_t before : {twice + 1, (twice + 1 + count) / 2, count}) {
        expectTwice(count, twice, before, texts);
      }
    }
  }
}

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
