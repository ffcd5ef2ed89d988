#include "tests/text/TextPairs.h"
#include "text/UniquenessCheck.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace velmora::internal {
namespace {

std::string textOf(std::size_t number) { return "/folder/" + std::to_string(number); }

void addDifferent(UniquenessCheck& texts, std::size_t count) {
  for (std::size_t number = 0; number < count; ++number) {
    texts.add(textOf(number));
  }
}

TEST(UniquenessCheckTest, textsAreDistinctUnlessCanonicallyEqual) {
  for (const TextPair& row : textPairs) {
    SCOPED_TRACE(row.name);
    UniquenessCheck texts;
    texts.add(row.a);
    texts.add(row.b);
    EXPECT_EQ(texts.allDistinct(), !row.areEqual);
  }
}

// Counts around the number above which texts are checked in groups, and much larger counts.
constexpr std::size_t counts[] = {1, 2, 1022, 1023, 1024, 1025, 2047, 2048, 5000, 30'000};

TEST(UniquenessCheckTest, textsAreDistinctWithoutDuplicates) {
  for (const std::size_t count : counts) {
    SCOPED_TRACE(count);
    UniquenessCheck texts;
    addDifferent(texts, count);
    EXPECT_EQ(texts.size(), count);
    EXPECT_TRUE(texts.allDistinct());
    EXPECT_EQ(texts.size(), 0);
  }
}

void expectDuplicate(std::size_t count, std::size_t twice, std::size_t before,
                     UniquenessCheck& texts) {
  for (std::size_t number = 0; number <= count; ++number) {
    if (number == before) {
      texts.add(textOf(twice));
    }
    if (number < count) {
      texts.add(textOf(number));
    }
  }
  EXPECT_EQ(texts.size(), count + 1);
  EXPECT_FALSE(texts.allDistinct()) << twice << " again before " << before;
  EXPECT_EQ(texts.size(), 0);
}

TEST(UniquenessCheckTest, textsAreNotDistinctWithADuplicateAnywhere) {
  for (const std::size_t count : counts) {
    SCOPED_TRACE(count);
    UniquenessCheck texts;
    for (const std::size_t twice : {std::size_t{0}, count / 2, count - 1}) {
      for (const std::size_t before : {twice + 1, (twice + 1 + count) / 2, count}) {
        expectDuplicate(count, twice, before, texts);
      }
    }
  }
}

TEST(UniquenessCheckTest, duplicateIsFoundAmongAHundredThousand) {
  constexpr std::size_t count = 100'000;
  UniquenessCheck texts;
  addDifferent(texts, count);
  EXPECT_TRUE(texts.allDistinct());
  texts.add(textOf(count / 3));
  addDifferent(texts, count);
  EXPECT_FALSE(texts.allDistinct());
}

TEST(UniquenessCheckTest, isEmptyAtFirstAndAfterACheck) {
  UniquenessCheck texts;
  EXPECT_TRUE(texts.allDistinct());
  texts.add("a");
  texts.add("a");
  EXPECT_FALSE(texts.allDistinct());
  EXPECT_TRUE(texts.allDistinct());
  texts.add("a");
  EXPECT_TRUE(texts.allDistinct());
  texts.add("a");
  texts.clear();
  EXPECT_EQ(texts.size(), 0);
  texts.add("a");
  EXPECT_TRUE(texts.allDistinct());
}

TEST(UniquenessCheckTest, includesCanonicallyEqualTexts) {
  for (const TextPair& row : textPairs) {
    SCOPED_TRACE(row.name);
    UniquenessCheck texts;
    UniquenessCheck others;
    texts.add(row.a);
    others.add(row.b);
    EXPECT_EQ(texts.includes(others), row.areEqual);
    EXPECT_TRUE(texts.allDistinct());
  }
}

TEST(UniquenessCheckTest, includesSomeOrAllOfManyTexts) {
  for (const std::size_t count : counts) {
    SCOPED_TRACE(count);
    UniquenessCheck texts;
    addDifferent(texts, count);
    UniquenessCheck others;
    EXPECT_TRUE(texts.includes(others));
    addDifferent(others, count);
    others.add(textOf(0));
    EXPECT_TRUE(texts.includes(others));
    others.add(textOf(count));
    EXPECT_FALSE(texts.includes(others));
    EXPECT_TRUE(texts.allDistinct());
  }
}

TEST(UniquenessCheckTest, answersTheSameForAnySalt) {
  for (const std::uint64_t salt : {std::uint64_t{0}, std::uint64_t{1}, ~std::uint64_t{0}}) {
    UniquenessCheck texts;
    UniquenessCheck others;
    texts.clear(salt);
    others.clear(salt);
    addDifferent(texts, 2000);
    others.add(textOf(7));
    EXPECT_TRUE(texts.includes(others));
    EXPECT_TRUE(texts.allDistinct());
    texts.add(textOf(1));
    texts.add(textOf(1));
    EXPECT_FALSE(texts.allDistinct());
  }
}

}  // namespace
}  // namespace velmora::internal
