#include "json/ExactInteger.h"
#include "json/streaming/TokenCursor.h"
#include "tests/json/JSONCases.h"
#include "tests/json/ReadDocument.h"
#include "tests/json/TokenizedText.h"
#include "tests/text/Words.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace velmora::internal {
namespace {

/// The value when `text` is one value and nothing else.
template <class Value>
std::optional<Value> taken(const std::string& text) {
  TokenizedText document(text);
  Value value{};
  const bool isTaken = document.tokens().take(value) && document.tokens().atEnd();
  return isTaken ? std::optional(value) : std::nullopt;
}

std::optional<std::string> takenText(const std::string& text) {
  TokenizedText document(text);
  std::string_view value;
  const bool isTaken = document.tokens().take(value) && document.tokens().atEnd();
  return isTaken ? std::optional(std::string(value)) : std::nullopt;
}

bool isNull(const std::string& text) {
  TokenizedText document(text);
  return document.tokens().takeNull() && document.tokens().atEnd();
}

/// Expects the exact value. Blanks around it make no difference.
template <std::integral Integer>
void expectIntegers(const NumberCase& row) {
  for (const std::string& text : wordsOf(row.texts)) {
    SCOPED_TRACE(text);
    const std::optional<ExactInteger> exact =
        row.value == noNumber ? std::nullopt : exactInteger(text);
    const std::optional<Integer> expected =
        exact.has_value() ? checkedCast<Integer>(*exact) : std::nullopt;
    EXPECT_EQ(taken<Integer>(text), expected);
    EXPECT_EQ(taken<Integer>(" \n" + text + "\r\t "), expected);
  }
}

TEST(TokenCursorTest, takesExactIntegers) {
  for (const NumberCase& row : numberCases) {
    expectIntegers<std::int64_t>(row);
    expectIntegers<std::uint64_t>(row);
    expectIntegers<std::uint32_t>(row);
    expectIntegers<std::uint16_t>(row);
    expectIntegers<std::int8_t>(row);
  }
}

TEST(TokenCursorTest, takesEveryNumber) {
  for (const NumberCase& row : numberCases) {
    for (const std::string& text : wordsOf(row.texts)) {
      for (const std::string& document : {text, " \n" + text + "\r\t "}) {
        TokenizedText numbers(document);
        EXPECT_EQ(numbers.tokens().takeNumber() && numbers.tokens().atEnd(), row.value != noNumber)
            << document;
      }
    }
  }
}

TEST(TokenCursorTest, takesEveryPlainInteger) {
  std::mt19937_64 random(1);
  for (int count = 0; count < 5000; ++count) {
    const std::uint64_t number = random() >> (random() % 64);
    EXPECT_EQ(taken<std::uint64_t>(std::to_string(number)), number);
    const auto signedNumber = static_cast<std::int64_t>(number);
    EXPECT_EQ(taken<std::int64_t>(std::to_string(signedNumber)), signedNumber);
  }
}

TEST(TokenCursorTest, takesNoInexactNumber) {
  constexpr std::string_view characters = "00123456789999-+.eE:/";
  std::mt19937_64 random(2);
  for (int count = 0; count < 20'000; ++count) {
    std::string number = random() % 2 == 0 ? "1" : "";
    for (std::size_t length = 1 + random() % 21; length > 0; --length) {
      number += characters[random() % (random() % 4 == 0 ? characters.size() : 14)];
    }
    if (const std::optional<std::uint64_t> value = taken<std::uint64_t>(number)) {
      ASSERT_TRUE(isJSONNumber(number)) << number;
      ASSERT_EQ(exactInteger(number), (ExactInteger{.magnitude = *value})) << number;
    }
  }
}

void expectTextAfterOthers(const std::string& string, const std::optional<std::string>& text) {
  const std::string others = R"("plain" "escaped\n" "" "plain again" "two\\\"")";
  TokenizedText document(others + string);
  std::string_view taken;
  for (const std::string_view expected : {"plain", "escaped\n", "", "plain again", "two\\\""}) {
    ASSERT_TRUE(document.tokens().take(taken));
    EXPECT_EQ(taken, expected);
  }
  ASSERT_EQ(document.tokens().take(taken), text.has_value());
  if (text.has_value()) {
    EXPECT_EQ(taken, *text);
  }
}

TEST(TokenCursorTest, takesTheScalarsOfTheStrictReader) {
  for (const ReadCase& row : readCases) {
    SCOPED_TRACE(row.name);
    std::optional<std::string> text;
    if (const ReadDocument read(row.document); read.value().type() == JSONType::string) {
      text = read.value().text();
      expectTextAfterOthers(row.document, text);
    }
    const std::optional<bool> boolean = row.rewritten == "true" || row.rewritten == "false"
                                            ? std::optional(row.rewritten == "true")
                                            : std::nullopt;
    for (const std::string& document : {row.document, "  " + row.document + "\n\t "}) {
      EXPECT_EQ(takenText(document), text);
      EXPECT_EQ(taken<bool>(document), boolean);
      EXPECT_EQ(isNull(document), row.rewritten == "null");
      EXPECT_EQ(taken<int>(document), row.rewritten == "7" ? std::optional(7) : std::nullopt);
    }
  }
}

TEST(TokenCursorTest, takesNoScalarThatTheStrictReaderRefuses) {
  for (const RefusedCase& row : refusedCases) {
    if (row.tokens == TokenFault::none) {
      SCOPED_TRACE(row.name);
      for (const std::string& document : {row.document, "  " + row.document + "\n\t "}) {
        EXPECT_EQ(takenText(document), std::nullopt);
        EXPECT_EQ(taken<bool>(document), std::nullopt);
        EXPECT_FALSE(isNull(document));
        EXPECT_EQ(taken<int>(document), std::nullopt);
      }
      if (row.what == badEscape && row.document.starts_with('"')) {
        expectTextAfterOthers(row.document, std::nullopt);
      }
    }
  }
}

TEST(TokenCursorTest, takesTheNextTokenOnly) {
  TokenizedText document(R"( { "a" : [ 1 , null ] } )");
  TokenCursor& tokens = document.tokens();
  EXPECT_FALSE(tokens.take('}'));
  EXPECT_TRUE(tokens.isNext('{'));
  EXPECT_TRUE(tokens.take('{'));
  Text key;
  EXPECT_TRUE(tokens.take(key));
  EXPECT_EQ(key, "a");
  EXPECT_FALSE(tokens.take(','));
  EXPECT_TRUE(tokens.take(':'));
  EXPECT_EQ(tokens.remaining(), std::string_view("[ 1 , null ] } ").size());
  EXPECT_EQ(std::string_view(tokens.position(), tokens.remaining()), "[ 1 , null ] } ");
  EXPECT_TRUE(tokens.take('['));
  int number = 0;
  EXPECT_TRUE(tokens.take(number));
  EXPECT_TRUE(tokens.take(','));
  EXPECT_TRUE(tokens.isNext('n'));
  EXPECT_TRUE(tokens.takeNull());
  EXPECT_FALSE(tokens.atEnd());
  EXPECT_TRUE(tokens.take(']'));
  EXPECT_TRUE(tokens.take('}'));
  EXPECT_TRUE(tokens.atEnd());
  EXPECT_EQ(tokens.remaining(), 0);
}

TEST(TokenCursorTest, hasNothingToTakeAtTheEnd) {
  TokenizedText document("1");
  TokenCursor& tokens = document.tokens();
  int number = 0;
  ASSERT_TRUE(tokens.take(number));
  EXPECT_TRUE(tokens.atEnd());
  for (const char byte : {'{', '}', '"', '1', ' '}) {
    EXPECT_FALSE(tokens.isNext(byte));
  }
  std::string_view text;
  TextView view;
  Text owned("before");
  bool boolean = false;
  EXPECT_FALSE(tokens.take('}'));
  EXPECT_FALSE(tokens.take(number));
  EXPECT_FALSE(tokens.take(text));
  EXPECT_FALSE(tokens.take(view));
  EXPECT_FALSE(tokens.take(owned));
  EXPECT_FALSE(tokens.take(boolean));
  EXPECT_FALSE(tokens.takeNull());
  EXPECT_FALSE(tokens.takeNumber());
  EXPECT_FALSE(tokens.take(MemberPrefix()));
  EXPECT_FALSE(tokens.take(MemberPrefix(",\"a\":")));
  EXPECT_TRUE(tokens.atEnd());
}

TEST(TokenCursorTest, takesAMemberStartByItsBytes) {
  const MemberPrefix start(",\"a\" : ");
  const std::string rest = "1,\"b\":\"" + std::string(MemberPrefix::maxLength, 'x') + "\"}";
  TokenizedText same(",\"a\" : " + rest);
  EXPECT_TRUE(same.tokens().take(start));
  int number = 0;
  EXPECT_TRUE(same.tokens().take(number));
  for (const std::string& text : {",\"a\" :  "s, ",\"a\": "s, ", \"a\": "s, ",\"b\" : "s,
                                  "{\"a\" : "s, ",\"a\"  :"s, ",\"a\" , "s}) {
    TokenizedText other(text + rest);
    EXPECT_FALSE(other.tokens().take(start)) << text;
    EXPECT_EQ(other.tokens().remaining(), text.size() + rest.size());
  }
}

TEST(TokenCursorTest, resolvesEscapesAfterASkippedKeyWithAnEscape) {
  const std::string key = R"(,"\u0061":)";
  TokenizedText document(key + R"("a\/b",)" + '"' + std::string(MemberPrefix::maxLength, 'x') +
                         '"');
  std::string_view text;
  EXPECT_TRUE(document.tokens().take(MemberPrefix(key)));
  EXPECT_TRUE(document.tokens().take(text));
  EXPECT_EQ(text, "a/b");
}

std::string startOfLength(std::size_t length) {
  std::string text = ",\"";
  while (text.size() < length) {
    text += static_cast<char>('a' + text.size() % 26);
  }
  return text.substr(0, length);
}

TEST(MemberPrefixTest, matchesItsTextBeforeAnyOtherText) {
  for (std::size_t length = 1; length <= MemberPrefix::maxLength; ++length) {
    const std::string text = startOfLength(length);
    const MemberPrefix start(text);
    EXPECT_EQ(start.length(), length);
    for (const char next : {'\0', '1', '"', '\xFF'}) {
      EXPECT_TRUE(start.isAt((text + std::string(MemberPrefix::maxLength, next)).data())) << length;
    }
  }
}

TEST(MemberPrefixTest, doesNotMatchWhenOneBitDiffers) {
  for (std::size_t length = 1; length <= MemberPrefix::maxLength; ++length) {
    const std::string text = startOfLength(length);
    const MemberPrefix start(text);
    for (std::size_t place = 0; place < length; ++place) {
      for (unsigned bit = 0; bit < 8; ++bit) {
        std::string other = text + std::string(MemberPrefix::maxLength, 'x');
        other[place] = static_cast<char>(static_cast<unsigned char>(other[place]) ^ 1U << bit);
        EXPECT_FALSE(start.isAt(other.data())) << length << ' ' << place << ' ' << bit;
      }
    }
  }
}

TEST(MemberPrefixTest, isEmptyForAnEmptyOrTooLongText) {
  EXPECT_EQ(MemberPrefix().length(), 0);
  EXPECT_EQ(MemberPrefix(startOfLength(MemberPrefix::maxLength + 1)).length(), 0);
}

}  // namespace
}  // namespace velmora::internal
