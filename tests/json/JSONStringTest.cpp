#include "json/JSONString.h"
#include "tests/text/Words.h"
#include "text/UTF8.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

constexpr char guard = '\xFE';

constexpr std::size_t margin = 16;

/// Resolves `content` into a copy. The guard bytes around the copy must not change.
std::optional<std::string> resolvedCopy(const std::string& content) {
  const std::size_t room = roomForResolved(content);
  std::string bytes(margin + room + margin, guard);
  const std::optional<std::size_t> length = copyResolvingEscapes(content, bytes.data() + margin);
  EXPECT_EQ(bytes.substr(0, margin), std::string(margin, guard));
  EXPECT_EQ(bytes.substr(margin + room), std::string(margin, guard));
  if (!length.has_value()) {
    return std::nullopt;
  }
  EXPECT_LE(*length, content.size());
  return bytes.substr(margin, *length);
}

/// Resolves `content` in place. The guard bytes around it must not change. A copy must be equal.
std::optional<std::string> resolved(const std::string& content) {
  std::string bytes = std::string(margin, guard) + content + std::string(margin, guard);
  const std::optional<std::size_t> length = resolveEscapes({bytes.data() + margin, content.size()});
  EXPECT_EQ(bytes.substr(0, margin), std::string(margin, guard));
  EXPECT_EQ(bytes.substr(margin + content.size()), std::string(margin, guard));
  const std::optional<std::string> copy = resolvedCopy(content);
  EXPECT_EQ(copy.has_value(), length.has_value()) << content;
  if (!length.has_value()) {
    return std::nullopt;
  }
  EXPECT_LE(*length, content.size());
  std::string text = bytes.substr(margin + content.size() - *length, *length);
  EXPECT_EQ(copy, text);
  return text;
}

struct EscapeCase {
  std::string_view escape;
  std::string_view text;
};

constexpr EscapeCase escapes[] = {
    {"\\\"", "\""},
    {"\\\\", "\\"},
    {"\\/", "/"},
    {"\\b", "\b"},
    {"\\f", "\f"},
    {"\\n", "\n"},
    {"\\r", "\r"},
    {"\\t", "\t"},
    {"\\u0000", {"\0", 1}},
    {"\\u0022", "\""},
    {"\\u005C", "\\"},
    {"\\u007f", "\x7F"},
    {"\\u0080", "\u0080"},
    {"\\u07FF", "\u07ff"},
    {"\\u0800", "\u0800"},
    {"\\uD7ff", "\ud7ff"},
    {"\\uE000", "\ue000"},
    {"\\uFfFf", "\uffff"},
    {"\\uD800\\uDC00", "\U00010000"},
    {"\\ud83d\\ude00", "\U0001F600"},
    {"\\uDBFF\\uDFFF", "\U0010FFFF"},
};

TEST(JSONStringTest, textWithoutEscapesIsUnchanged) {
  for (std::size_t length = 0; length <= 100; ++length) {
    EXPECT_EQ(resolved(std::string(length, 'x')), std::string(length, 'x'));
  }
  EXPECT_EQ(resolved("\u00e9/\u65e5 \x7F\U0001F600"), "\u00e9/\u65e5 \x7F\U0001F600");
}

TEST(JSONStringTest, escapesAreResolvedAtEveryPosition) {
  for (const EscapeCase& row : escapes) {
    SCOPED_TRACE(row.escape);
    for (std::size_t before = 0; before <= 17; ++before) {
      for (std::size_t after = 0; after <= 17; ++after) {
        const std::string left(before, 'l');
        const std::string right(after, 'r');
        EXPECT_EQ(resolved(left + std::string(row.escape) + right),
                  left + std::string(row.text) + right);
      }
    }
  }
}

TEST(JSONStringTest, escapesAreResolvedInSequence) {
  // Bytes that differ in one bit from those that the search looks for.
  constexpr std::string_view between = "[]{|}~\xC3\x9C\xDC\x8C";
  for (const EscapeCase& first : escapes) {
    for (const EscapeCase& second : escapes) {
      for (std::size_t length = 0; length <= between.size(); ++length) {
        const std::string_view middle = between.substr(0, length);
        std::string content;
        std::string text;
        for (const EscapeCase* row : {&first, &second, &first, &first, &second}) {
          content.append(row->escape).append(middle);
          text.append(row->text).append(middle);
        }
        EXPECT_EQ(resolved(content), text);
      }
    }
  }
}

TEST(JSONStringTest, longRunsAreResolved) {
  std::string content;
  std::string text;
  for (int count = 0; count < 10'000; ++count) {
    content += "\\/\\u0041";
    text += "/A";
  }
  EXPECT_EQ(resolved(content), text);
  EXPECT_EQ(resolved("\\n" + std::string(100'000, 'x')), "\n" + std::string(100'000, 'x'));
  EXPECT_EQ(resolved(std::string(100'000, 'x') + "\\n"), std::string(100'000, 'x') + "\n");
}

std::string escapeOf(std::uint32_t unit) {
  std::array<char, 7> text{};
  static_cast<void>(std::snprintf(text.data(), text.size(), "\\u%04X", unit));
  return text.data();
}

TEST(JSONStringTest, everyCodeUnitIsResolvedUnlessItIsHalfOfAPair) {
  for (std::uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const std::optional<std::string> text = resolved(escapeOf(unit));
    const bool isSurrogate = unit >= 0xD800 && unit <= 0xDFFF;
    ASSERT_EQ(text.has_value(), !isSurrogate) << unit;
    if (text.has_value()) {
      const CodePoint codePoint = codePointAt(*text, 0);
      EXPECT_EQ(codePoint.value, static_cast<std::int32_t>(unit));
      EXPECT_EQ(codePoint.length, text->size());
    }
  }
}

TEST(JSONStringTest, pairsOfSurrogatesAreResolved) {
  for (std::uint32_t codePoint = 0x10000; codePoint <= 0x10FFFF; codePoint += 0x3FF) {
    const std::uint32_t leading = 0xD800 + ((codePoint - 0x10000) >> 10);
    const std::uint32_t trailing = 0xDC00 + ((codePoint - 0x10000) & 0x3FF);
    const std::optional<std::string> text = resolved(escapeOf(leading) + escapeOf(trailing));
    ASSERT_TRUE(text.has_value()) << codePoint;
    EXPECT_EQ(codePointAt(*text, 0).value, static_cast<std::int32_t>(codePoint));
    EXPECT_EQ(text->size(), 4U);
    EXPECT_EQ(resolved(escapeOf(trailing) + escapeOf(leading)), std::nullopt);
  }
}

TEST(JSONStringTest, everyOtherCharacterAfterABackslashIsRefused) {
  constexpr std::string_view allowed = "\"\\/bfnrt";
  for (int byte = 0; byte < 256; ++byte) {
    const char character = static_cast<char>(byte);
    EXPECT_EQ(resolved({'\\', character}).has_value(),
              allowed.find(character) != std::string_view::npos)
        << byte;
  }
}

TEST(JSONStringTest, brokenEscapesAreRefused) {
  const std::vector<std::string> broken = wordsOf(
      R"(\ \u \u0 \u00 \u004 \u004g \u004G \u+041 \u0x41 \U0041 \x41 \u004\n \ud834 \ud834\ )"
      R"(\ud834\u \ud834\udd1 \ud834\udd1g \ud834\n \ud834x \ud834xdd1e \ud834\xdd1e \ud834\u0041 )"
      R"(\ud834\ue000 \ud834\udbff \udc00 \udfff \\\ \n\)");
  for (const std::string& content : broken) {
    SCOPED_TRACE(content);
    for (std::size_t before = 0; before <= 17; ++before) {
      const std::string left(before, 'l');
      EXPECT_EQ(resolved(left + content), std::nullopt);
    }
  }
}

TEST(JSONStringTest, bytesAfterTheContentAreNotRead) {
  for (const std::string_view escape : {"\\/", "\\n", "\\u0041", "\\ud83d\\ude00"}) {
    for (std::size_t length = 1; length < escape.size(); ++length) {
      std::string bytes(escape);
      std::string copy(roomForResolved(bytes), guard);
      EXPECT_EQ(copyResolvingEscapes(escape.substr(0, length), copy.data()), std::nullopt);
      EXPECT_EQ(resolveEscapes({bytes.data(), length}), std::nullopt);
    }
  }
}

TEST(JSONStringTest, everyByteThatIsNoDigitIsRefusedAtEachPosition) {
  constexpr std::string_view digits = "0123456789abcdefABCDEF";
  for (std::size_t place = 2; place < 6; ++place) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string content = "\\u1111";
      content[place] = static_cast<char>(byte);
      EXPECT_EQ(resolved(content).has_value(),
                digits.find(content[place]) != std::string_view::npos)
          << content;
    }
  }
}

}  // namespace
}  // namespace velmora::internal
