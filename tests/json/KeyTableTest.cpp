#include "json/KeyTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace velmora::internal {
namespace {

constexpr std::array<std::string_view, 9> keys = {
    "size", "name", "kind", "storedSize", "stored", "s", "sizes", "\u00e9", "key with \"quotes\"",
};
constexpr KeyTable table{keys};

static_assert(table.find("size") == 0);
static_assert(table.find("other") == table.none);

TEST(KeyTableTest, findsEachKey) {
  for (std::size_t index = 0; index < keys.size(); ++index) {
    EXPECT_EQ(table.find(keys[index]), index);
    EXPECT_EQ(table.find(std::string(keys[index])), index);
  }
}

TEST(KeyTableTest, findsNoOtherKey) {
  const std::string_view others[] = {
      "",           "x",     "Size",        "SIZE",    "siz",         "size ",
      " size",      "sizE",  "e",           "sixe",    "szie",        "sizesize",
      "storedsize", "store", "storedSizes", "e\u0301", {"size\0", 5}, {"\0", 1},
  };
  for (const std::string_view other : others) {
    EXPECT_EQ(table.find(other), table.none) << other;
  }
}

TEST(KeyTableTest, distinguishesKeysThatDifferInOneByte) {
  for (const std::string_view key : keys) {
    for (std::size_t position = 0; position < key.size(); ++position) {
      for (int change = 1; change < 256; ++change) {
        std::string other(key);
        other[position] = static_cast<char>(static_cast<unsigned char>(other[position]) ^ change);
        const auto found = std::ranges::find(keys, other);
        EXPECT_EQ(table.find(other), static_cast<std::size_t>(found - keys.begin())) << other;
      }
    }
  }
}

// The hash uses the first, the middle and the last byte, and the low byte of the length.
TEST(KeyTableTest, distinguishesKeysWithTheSameHashedBytes) {
  EXPECT_EQ(table.find("storXdSize"), table.none);
  std::string longer(4 + 256, 's');
  longer[longer.size() / 2] = 'z';
  longer.back() = 'e';
  EXPECT_EQ(table.find(longer), table.none);
}

TEST(KeyTableTest, findsNoKeyInAnEmptySlot) {
  for (int first = 0; first < 256; ++first) {
    for (int last = 0; last < 256; ++last) {
      const std::string text = {static_cast<char>(first), static_cast<char>(last)};
      EXPECT_EQ(table.find(text), text == "\u00e9" ? 7 : table.none);
    }
  }
}

}  // namespace
}  // namespace velmora::internal
