#include "tests/text/NotUTF8.h"
#include "text/UTF8.h"

#include <gtest/gtest.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

struct StepCase {
  std::string_view name;
  std::string_view bytes;
  std::int32_t value;
};

constexpr StepCase stepCases[] = {
    {"ascii", "a", 'a'},
    {"nul", {"\0", 1}, 0},
    {"lastASCII", "\x7F", 0x7F},
    {"firstOfTwoBytes", "\xC2\x80", 0x80},
    {"lastOfTwoBytes", "\xDF\xBF", 0x7FF},
    {"firstOfThreeBytes", "\xE0\xA0\x80", 0x800},
    {"beforeSurrogates", "\xED\x9F\xBF", 0xD7FF},
    {"afterSurrogates", "\xEE\x80\x80", 0xE000},
    {"noncharacter", "\xEF\xBF\xBF", 0xFFFF},
    {"firstOfFourBytes", "\xF0\x90\x80\x80", 0x10000},
    {"last", "\xF4\x8F\xBF\xBF", 0x10FFFF},
};

void expectStep(std::string_view bytes, std::int32_t value, std::size_t length) {
  // An allocation of exactly this length, so that sanitizers see a read beyond the end.
  const std::vector<char> exact(bytes.begin(), bytes.end());
  const std::string amongOthers = "x" + std::string(bytes) + "y";
  const std::string before = "x" + std::string(bytes.substr(0, length)) + "/";
  for (const CodePoint& step :
       {codePointAt(amongOthers, 1), codePointAt({exact.data(), exact.size()}, 0),
        codePointBefore(before, 1 + length)}) {
    EXPECT_EQ(step.value, value);
    EXPECT_EQ(step.length, length);
  }
}

TEST(UTF8Test, stepsOverCodePointsAndInvalidBytesInBothDirections) {
  for (const StepCase& row : stepCases) {
    SCOPED_TRACE(row.name);
    expectStep(row.bytes, row.value, row.bytes.size());
  }
  for (const std::string& bytes : notUTF8) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    expectStep(bytes, CodePoint::notUTF8, 1);
  }
}

// All first bytes, with following bytes on both sides of each limit.
TEST(UTF8Test, stepsAsUTF8ProcDoesOverAllBytes) {
  constexpr std::array<int, 6> later = {0x00, 0x7F, 0x80, 0x9F, 0xBF, 0xC0};
  for (int first = 0; first < 0x100; ++first) {
    for (int second = 0; second < 0x100; ++second) {
      for (const int third : later) {
        for (const int fourth : later) {
          const std::array<utf8proc_uint8_t, 4> bytes = {
              static_cast<utf8proc_uint8_t>(first), static_cast<utf8proc_uint8_t>(second),
              static_cast<utf8proc_uint8_t>(third), static_cast<utf8proc_uint8_t>(fourth)};
          utf8proc_int32_t value = 0;
          const utf8proc_ssize_t length = utf8proc_iterate(bytes.data(), 4, &value);
          const CodePoint step = codePointAt({reinterpret_cast<const char*>(bytes.data()), 4}, 0);
          ASSERT_EQ(step.isUTF8(), length > 0) << std::hex << first << ' ' << second;
          ASSERT_EQ(step.value, value) << std::hex << first << ' ' << second;
          ASSERT_EQ(step.length, std::max<utf8proc_ssize_t>(length, 1));
        }
      }
    }
  }
}

TEST(UTF8Test, strayContinuationByteEndsNoCodePoint) {
  EXPECT_FALSE(codePointBefore("\u0600\x80/", 3).isUTF8());
  EXPECT_FALSE(codePointBefore("\x80\x80\x80\x80\x80/", 5).isUTF8());
  EXPECT_FALSE(codePointBefore("\U0001F600\x80/", 5).isUTF8());
}

TEST(UTF8Test, writesEachCodePointAsItIsRead) {
  for (char32_t value = 0; value <= 0x10FFFF; ++value) {
    if (isSurrogate(value)) {
      continue;
    }
    std::string text;
    appendUTF8(text, value);
    const CodePoint point = codePointAt(text, 0);
    ASSERT_EQ(static_cast<char32_t>(point.value), value);
    ASSERT_EQ(point.length, text.size());
  }
}

TEST(UTF8Test, findsTheFirstByteBeyondASCIIAnywhereInAWord) {
  for (std::size_t size = 0; size < 40; ++size) {
    std::string text(size, 'a');
    EXPECT_EQ(asciiPrefixLength(text), size);
    for (std::size_t position = 0; position < size; ++position) {
      text.assign(size, '\x7F');
      text[position] = '\x80';
      EXPECT_EQ(asciiPrefixLength(text), position) << "of " << size;
      std::fill(text.begin() + static_cast<std::ptrdiff_t>(position), text.end(), '\xFF');
      EXPECT_EQ(asciiPrefixLength(text), position) << "of " << size;
    }
  }
}

TEST(UTF8Test, findsTheFirstDifferenceAnywhereInAWord) {
  for (std::size_t size = 0; size < 40; ++size) {
    const std::string text(size, 'a');
    EXPECT_EQ(commonPrefixLength(text, text), size);
    EXPECT_EQ(commonPrefixLength(text, text + "a"), size);
    EXPECT_EQ(commonPrefixLength(text + "a", text), size);
    for (std::size_t position = 0; position < size; ++position) {
      std::string other = text;
      other[position] = 'b';
      EXPECT_EQ(commonPrefixLength(text, other), position) << "of " << size;
      std::fill(other.begin() + static_cast<std::ptrdiff_t>(position), other.end(), '\xFF');
      EXPECT_EQ(commonPrefixLength(text, other), position) << "of " << size;
    }
  }
}

TEST(UTF8Test, surrogatesAreHighOrLow) {
  struct {
    char32_t unit;
    bool isHigh;
    bool isLow;
  } const rows[] = {{0xD7FF, false, false}, {0xD800, true, false}, {0xDBFF, true, false},
                    {0xDC00, false, true},  {0xDFFF, false, true}, {0xE000, false, false}};
  for (const auto& row : rows) {
    EXPECT_EQ(isHighSurrogate(row.unit), row.isHigh) << static_cast<unsigned>(row.unit);
    EXPECT_EQ(isLowSurrogate(row.unit), row.isLow) << static_cast<unsigned>(row.unit);
    EXPECT_EQ(isSurrogate(row.unit), row.isHigh || row.isLow) << static_cast<unsigned>(row.unit);
  }
}

TEST(UTF8Test, aPairOfSurrogatesIsACodePoint) {
  EXPECT_EQ(codePointOfPair(0xD800, 0xDC00), 0x10000U);
  EXPECT_EQ(codePointOfPair(0xD83D, 0xDE00), 0x1F600U);
  EXPECT_EQ(codePointOfPair(0xDBFF, 0xDFFF), 0x10FFFFU);
}

}  // namespace
}  // namespace velmora::internal
