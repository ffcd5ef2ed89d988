#include "json/streaming/TextArena.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

/// A text of this length, which differs for each number.
std::string textOf(std::size_t number, std::size_t length) {
  std::string text = std::to_string(number);
  text.resize(length, static_cast<char>('a' + number % 26));
  return text;
}

TEST(TextArenaTest, keepsEveryTextAtItsAddress) {
  TextArena arena;
  std::vector<std::string> texts;
  std::vector<std::string_view> copies;
  for (std::size_t number = 0; number < 500; ++number) {
    texts.push_back(textOf(number, number % 40 == 39 ? 40'000 : number));
    copies.push_back(arena.copy(texts.back()));
  }
  for (std::size_t number = 0; number < texts.size(); ++number) {
    EXPECT_EQ(copies[number], texts[number]);
    EXPECT_NE(copies[number].data(), texts[number].data());
  }
}

TEST(TextArenaTest, copiesAnEmptyText) {
  TextArena arena;
  EXPECT_EQ(arena.copy(""), "");
  const std::string_view text = arena.copy("text");
  EXPECT_EQ(arena.copy(""), "");
  EXPECT_EQ(text, "text");
}

TEST(TextArenaTest, releasesTheEndOfTheLastText) {
  TextArena arena;
  char* const bytes = arena.allocate(100);
  std::ranges::copy(std::string_view("kept"), bytes);
  arena.shrink(96);
  const std::string_view next = arena.copy("next");
  EXPECT_EQ(next.data(), bytes + 4);
  EXPECT_EQ(std::string_view(bytes, 8), "keptnext");
}

TEST(TextArenaTest, reusesItsMemoryAfterBeingCleared) {
  TextArena arena;
  arena.clear();
  char* const first = arena.allocate(10);
  for (int count = 0; count < 10; ++count) {
    std::memset(arena.allocate(10'000), 'x', 10'000);
  }
  arena.clear();
  EXPECT_EQ(arena.allocate(10), first);
}

TEST(TextArenaTest, takesTextsOfAnyLengthAfterBeingCleared) {
  TextArena arena;
  for (const std::size_t length : {1U, 100'000U, 5U, 200'000U, 20'000U}) {
    const std::string text = textOf(length, length);
    const std::string_view small = arena.copy("small");
    const std::string_view copy = arena.copy(text);
    EXPECT_EQ(copy, text);
    EXPECT_EQ(small, "small");
    arena.clear();
  }
}

}  // namespace
}  // namespace velmora::internal
