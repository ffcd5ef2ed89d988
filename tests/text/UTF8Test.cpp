#include "text/UTF8.h"

#include <gtest/gtest.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace velmora {
namespace {

struct StepCase {
  std::string_view name;
  std::string_view bytes;
  std::int32_t value;
  std::size_t length;
};

constexpr StepCase stepCases[] = {
    {.name = "ascii", .bytes = "a", .value = 'a', .length = 1},
    {.name = "nul", .bytes = {"\0", 1}, .value = 0, .length = 1},
    {.name = "lastASCII", .bytes = "\x7F", .value = 0x7F, .length = 1},
    {.name = "firstOfTwoBytes", .bytes = "\xC2\x80", .value = 0x80, .length = 2},
    {.name = "lastOfTwoBytes", .bytes = "\xDF\xBF", .value = 0x7FF, .length = 2},
    {.name = "firstOfThreeBytes", .bytes = "\xE0\xA0\x80", .value = 0x800, .length = 3},
    {.name = "beforeSurrogates", .bytes = "\xED\x9F\xBF", .value = 0xD7FF, .length = 3},
    {.name = "afterSurrogates", .bytes = "\xEE\x80\x80", .value = 0xE000, .length = 3},
    {.name = "noncharacter", .bytes = "\xEF\xBF\xBF", .value = 0xFFFF, .length = 3},
    {.name = "firstOfFourBytes", .bytes = "\xF0\x90\x80\x80", .value = 0x10000, .length = 4},
    {.name = "last", .bytes = "\xF4\x8F\xBF\xBF", .value = 0x10FFFF, .length = 4},
    {.name = "continuation", .bytes = "\x80", .value = -1, .length = 1},
    {.name = "overlongNul", .bytes = "\xC0\x80", .value = -1, .length = 1},
    {.name = "overlongSlash", .bytes = "\xC0\xAF", .value = -1, .length = 1},
    {.name = "overlongTwoBytes", .bytes = "\xC1\xBF", .value = -1, .length = 1},
    {.name = "overlongThreeBytes", .bytes = "\xE0\x9F\xBF", .value = -1, .length = 1},
    {.name = "overlongFourBytes", .bytes = "\xF0\x8F\xBF\xBF", .value = -1, .length = 1},
    {.name = "firstSurrogate", .bytes = "\xED\xA0\x80", .value = -1, .length = 1},
    {.name = "lastSurrogate", .bytes = "\xED\xBF\xBF", .value = -1, .length = 1},
    {.name = "beyondLast", .bytes = "\xF4\x90\x80\x80", .value = -1, .length = 1},
    {.name = "fiveBytes", .bytes = "\xF8\x88\x80\x80\x80", .value = -1, .length = 1},
    {.name = "lastByte", .bytes = "\xFF", .value = -1, .length = 1},
    {.name = "truncatedTwoBytes", .bytes = "\xC3", .value = -1, .length = 1},
    {.name = "truncatedThreeBytes", .bytes = "\xE2\x82", .value = -1, .length = 1},
    {.name = "truncatedFourBytes", .bytes = "\xF0\x9F\x98", .value = -1, .length = 1},
    {.name = "interrupted", .bytes = "\xE2\x82/", .value = -1, .length = 1},
};

TEST(UTF8Test, stepsForwardByCodePointsAndOtherBytes) {
  for (const StepCase& row : stepCases) {
    SCOPED_TRACE(row.name);
    const std::string text = "x" + std::string(row.bytes) + "y";
    const CodePoint step = codePointAt(text, 1);
    EXPECT_EQ(step.value, row.value);
    EXPECT_EQ(step.length, row.length);
  }
}

TEST(UTF8Test, readsNothingBeyondTheEnd) {
  for (const StepCase& row : stepCases) {
    SCOPED_TRACE(row.name);
    const std::vector<char> exact(row.bytes.begin(), row.bytes.end());
    const CodePoint step = codePointAt({exact.data(), exact.size()}, 0);
    EXPECT_EQ(step.value, row.value);
    EXPECT_EQ(step.length, row.length);
  }
}

// All beginnings, with what may come behind them at both sides of each limit.
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

TEST(UTF8Test, stepsBackwardAsForward) {
  for (const StepCase& row : stepCases) {
    SCOPED_TRACE(row.name);
    const std::string text = "x" + std::string(row.bytes.substr(0, row.length)) + "/";
    const CodePoint step = codePointBefore(text, 1 + row.length);
    EXPECT_EQ(step.value, row.value);
    EXPECT_EQ(step.length, row.length);
  }
}

TEST(UTF8Test, strayContinuationEndsNoCodePoint) {
  EXPECT_FALSE(codePointBefore("\u0600\x80/", 3).isUTF8());
  EXPECT_FALSE(codePointBefore("\x80\x80\x80\x80\x80/", 5).isUTF8());
  EXPECT_FALSE(codePointBefore("\U0001F600\x80/", 5).isUTF8());
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

}  // namespace
}  // namespace velmora
