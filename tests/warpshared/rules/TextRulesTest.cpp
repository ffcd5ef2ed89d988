#include "tests/support/AnsweredCases.h"
#include "tests/warpshared/rules/SimplePathRules.h"
#include "text/Characters.h"
#include "text/LexicalPath.h"
#include "text/Text.h"
#include "warpshared/rules/TextRules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <random>
#include <vector>

namespace velmora::internal {
namespace {

struct PredicateCase {
  const char* name;
  std::string_view text;
  bool holds;
};

constexpr PredicateCase pathCases[] = {
    {"folder", "/a", true},
    {"longPath", "/Users/a/Documents/Holiday photos/2025/a.jpg", true},
    {"hiddenNames", "/Users/a/.config/..b/c../...", true},
    {"tilde", "/~/a", true},
    {"backslash", "/a\\..\\b", true},
    {"accent", "/\u00e9/e\u0301", true},
    {"notUTF8", "/\xFF/\xFE", true},
    {"empty", "", false},
    {"relativeDot", ".", false},
    {"dot", "/Users/./a", false},
    {"onlyDot", "/.", false},
    {"leadingSlashes", "//a", false},
    {"onlySlashes", "//", false},
    {"nul", {"/Users/a\0b", 10}, false},
    {"nulAtEnd", {"/\0", 2}, false},
    // The file system still takes this byte for a separator.
    {"markAfterInnerSlashes", "/a//\u0301b", false},
    {"markAfterSlashAtEnd", "/a/./\u0301", false},
    {"slashAfterPrependedMark", "/a\u0600//b", false},
};

constexpr PredicateCase keyCases[] = {
    {"twoNames", "a/b", true},
    {"hiddenName", "a/.b", true},
    {"hiddenFirst", ".a/b", true},
    {"twoDotsAndMore", "..a/b../..c", true},
    {"space", " / ", true},
    {"accent", "\u00e9/e\u0301", true},
    {"longKey", "warp/objects/2025/03/01/0123456789abcdef.bin", true},
    {"notUTF8", "\xFF/\xFE", true},
    {"empty", "", false},
    {"onlySlash", "/", false},
    {"trailingSlash", "a/", false},
    {"dotFirst", "./a", false},
    {"dot", "a/./b", false},
    {"dotAtEnd", "a/.", false},
    {"onlyDot", ".", false},
    {"upFirst", "../a", false},
    {"up", "a/../b", false},
    {"upAtEnd", "a/..", false},
    {"onlyUp", "..", false},
    {"onlyNUL", {"\0", 1}, false},
    {"nulInMarkedKey", {"a//\u0301\0", 6}, false},
    {"notUTF8AndUp", "\xFF/../a", false},
    // A "/" inside a larger character neither begins a key nor separates names.
    {"markAfterFirstSlash", "/\u0301a", true},
    {"markAfterInnerSlashes", "a//\u0301b", true},
    {"markAfterSlashAfterDot", "./\u0301", true},
    {"markAfterSlashAfterUp", "a/../\u0301b", true},
    {"prependedToLastSlash", "a\u0600/", true},
    {"markAfterOneSlashOnly", "a/\u0301b//c", false},
};

TEST(PathPredicatesTest, canonicalPathsAreStandardizedAndSafeKeysConsistOfNames) {
  for (const PredicateCase& row : pathCases) {
    EXPECT_EQ(isCanonicalAbsolutePath(row.text), row.holds) << row.name;
  }
  for (const PredicateCase& row : keyCases) {
    EXPECT_EQ(isSafeRelativeObjectKey(row.text), row.holds) << row.name;
  }
}

TEST(PathPredicatesTest, answersTheCases) {
  const auto expectAnswers = [](const char* path, std::size_t count, auto holds) {
    const std::vector<AnsweredCase> cases = readAnsweredCases(path);
    EXPECT_EQ(cases.size(), count);
    for (const AnsweredCase& row : cases) {
      EXPECT_EQ(holds(row.input), row.expect<bool>()) << row.name;
    }
  };
  expectAnswers("warpshared/canonicalPath.jsonl", 42, isCanonicalAbsolutePath);
  expectAnswers("warpshared/objectKey.jsonl", 12, isSafeRelativeObjectKey);
}

void expectAsTheRulesSay(std::string_view text) {
  ASSERT_EQ(isCanonicalAbsolutePath(text), isCanonicalByTheRules(text))
      << testing::PrintToString(text);
  ASSERT_EQ(isSafeRelativeObjectKey(text), isSafeByTheRules(text)) << testing::PrintToString(text);
}

// Puts each special byte at every position of texts up to several vectors long, so that it is in
// every part of a vector and across its ends.
TEST(PathPredicatesTest, answersFollowTheRulesAtEveryPosition) {
  constexpr std::string_view inserted[] = {
      "//", "/./",     "/../", "/.",       "/..",    "/",    ".",        "..", "/.a", "/..a",
      "/.", {"\0", 1}, "/...", "/\u0301/", "//\xFF", "\x01", {"/\0", 2}, "0",  "/0/", "\u0600//"};
  for (std::size_t length = 0; length < 45; ++length) {
    for (std::size_t position = 0; position <= length; ++position) {
      for (const std::string_view part : inserted) {
        std::string text(length, 'a');
        text.insert(position, part);
        expectAsTheRulesSay(text);
        expectAsTheRulesSay("/" + text);
      }
    }
  }
}

// The memory ends with the text, so that sanitizers see a read beyond the end.
TEST(PathPredicatesTest, readNothingBeyondTheEnd) {
  for (std::size_t length = 0; length < 100; ++length) {
    std::vector<char> bytes(length, 'a');
    for (std::size_t position = 0; position < length; position += 7) {
      bytes[position] = '/';
    }
    const std::string_view text(bytes.data(), bytes.size());
    expectAsTheRulesSay(text);
    expectAsTheRulesSay(text.substr(std::min<std::size_t>(length, 1)));
  }
}

class RandomPaths {
 public:
  std::string next() {
    static constexpr std::string_view parts[] = {
        "/", "/",        ".",      "..",     "a",      "name",       "0123456789", "/a/bc/",
        "/", {"\0", 1},  "\u0301", "\u00e9", "\u0600", "\U0001F600", "\xFF",       "\r\n",
        "a", "/folder/", "b",      "\u65e5", "/x",     "a name"};
    // Half of the paths use no refused part, because long paths would otherwise never pass.
    const std::size_t kinds = upTo(1) == 0 ? std::size(parts) : 0;
    std::string text = upTo(1) == 0 ? "/" : "";
    for (std::size_t count = upTo(30); count > 0; --count) {
      text += kinds != 0 ? parts[upTo(kinds - 1)] : ordinary[upTo(std::size(ordinary) - 1)];
    }
    return text;
  }

 private:
  static constexpr std::string_view ordinary[] = {"a", "bc/d", ".e", "f.g/h", "name", "\u00e9"};

  std::size_t upTo(std::size_t last) {
    return std::uniform_int_distribution<std::size_t>(0, last)(engine_);
  }

  std::mt19937_64 engine_{20240301};
};

TEST(PathPredicatesTest, answersFollowTheRulesForAnyText) {
  RandomPaths paths;
  int canonical = 0;
  int safe = 0;
  for (int count = 0; count < 100'000; ++count) {
    const std::string path = paths.next();
    expectAsTheRulesSay(path);
    canonical += isCanonicalAbsolutePath(path) ? 1 : 0;
    safe += isSafeRelativeObjectKey(path) ? 1 : 0;
  }
  // Too few of a kind would make the comparison weak.
  EXPECT_GT(canonical, 5'000);
  EXPECT_GT(safe, 5'000);
}

// All texts of up to seven of these bytes.
TEST(PathPredicatesTest, answersFollowTheRulesForAllShortTexts) {
  constexpr std::string_view bytes = {"/.a\0\xCC\x81", 6};
  std::vector<std::string> texts = {""};
  for (int length = 0; length <= 7; ++length) {
    std::vector<std::string> longer;
    for (const std::string& text : texts) {
      expectAsTheRulesSay(text);
      if (length < 7) {
        for (const char byte : bytes) {
          longer.push_back(text + byte);
        }
      }
    }
    texts = std::move(longer);
  }
}

constexpr std::string_view base64Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::string_view sixtyFourDigits =
    "0123456789abcdefABCDEF01234567890123456789abcdefABCDEF0123456789";

TEST(TextEncodingsTest, base64HasOnlyItsAlphabetAndPadding) {
  for (const char* const text : {"QQ==", "QUI="}) {
    EXPECT_TRUE(isStandardBase64(text)) << text;
  }
  for (const char* const text : {"Q", "Q===", "QQ==QUJD", "QUJD====", "QUJD\nUJD", "QUJD\n"}) {
    EXPECT_FALSE(isStandardBase64(text)) << text;
  }
}

TEST(TextEncodingsTest, answersTheCases) {
  const auto expectAnswers = [](const char* path, std::size_t count, auto isValid) {
    const std::vector<AnsweredCase> cases = readAnsweredCases(path);
    EXPECT_EQ(cases.size(), count);
    for (const AnsweredCase& row : cases) {
      EXPECT_EQ(isValid(row.input), row.expect<bool>()) << row.name;
    }
  };
  expectAnswers("warpshared/base64.jsonl", 17, isStandardBase64);
  expectAnswers("warpshared/checksum.jsonl", 9, isSHA256Hex);
}

// Tries each byte at each position of `text`.
void expectEachByteAtEachPosition(std::string text, bool (*isValid)(std::string_view),
                                  std::string_view digits, std::size_t placeCount) {
  for (std::size_t place = 0; place < placeCount; ++place) {
    const char original = text[place];
    for (int byte = 0; byte <= std::numeric_limits<unsigned char>::max(); ++byte) {
      text[place] = static_cast<char>(byte);
      EXPECT_EQ(isValid(text), digits.find(text[place]) != std::string_view::npos)
          << "byte " << byte << " at " << place;
    }
    text[place] = original;
  }
}

TEST(TextEncodingsTest, eachByteOfBase64IsChecked) {
  for (const std::size_t length : {4U, 8U, 16U, 36U, 68U}) {
    // The last digit may also be padding.
    expectEachByteAtEachPosition(std::string(length, 'Q'), isStandardBase64, base64Digits,
                                 length - 1);
    expectEachByteAtEachPosition(std::string(length - 2, 'Q') + "==", isStandardBase64,
                                 base64Digits, length - 2);
  }
}

TEST(TextEncodingsTest, eachByteOfAChecksumIsChecked) {
  constexpr std::string_view digits = "0123456789abcdefABCDEF";
  expectEachByteAtEachPosition(std::string(sixtyFourDigits), isSHA256Hex, digits,
                               sixtyFourDigits.size());
}

bool isBase64ByTheRules(std::string_view text) {
  std::size_t digits = 0;
  while (digits < text.size() && base64Digits.find(text[digits]) != std::string_view::npos) {
    ++digits;
  }
  const std::string_view rest = text.substr(digits);
  return text.size() % 4 == 0 && (rest.empty() || rest == "=" || rest == "==");
}

bool isChecksumByTheRules(std::string_view text) {
  return text.size() == 64 &&
         text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

class RandomDigits {
 public:
  // A text of `length` digits from `alphabet`, of which at most two are replaced by any byte.
  std::string next(std::string_view alphabet, std::size_t length) {
    std::string text(length, '\0');
    for (char& digit : text) {
      digit = alphabet[upTo(alphabet.size() - 1)];
    }
    for (std::size_t count = text.empty() ? 0 : upTo(2); count > 0; --count) {
      text[upTo(text.size() - 1)] = static_cast<char>(upTo(255));
    }
    return text;
  }

  std::size_t upTo(std::size_t last) {
    return std::uniform_int_distribution<std::size_t>(0, last)(engine_);
  }

 private:
  std::mt19937_64 engine_{20240303};
};

TEST(TextEncodingsTest, answersFollowTheRulesForAnyText) {
  constexpr std::string_view paddings[] = {"", "", "=", "==", "==="};
  RandomDigits random;
  int base64 = 0;
  int checksums = 0;
  for (int round = 0; round < 50'000; ++round) {
    std::string text = random.next(base64Digits, random.upTo(70));
    text += paddings[random.upTo(std::size(paddings) - 1)];
    ASSERT_EQ(isStandardBase64(text), isBase64ByTheRules(text)) << testing::PrintToString(text);
    base64 += isStandardBase64(text) ? 1 : 0;
    const std::string digits = random.next("0123456789abcdefABCDEF", 63 + random.upTo(2));
    ASSERT_EQ(isSHA256Hex(digits), isChecksumByTheRules(digits)) << testing::PrintToString(digits);
    checksums += isSHA256Hex(digits) ? 1 : 0;
  }
  // Too few of a kind would make the comparison weak.
  EXPECT_GT(base64, 2'000);
  EXPECT_GT(checksums, 2'000);
}

TEST(TextEncodingsTest, checksumHas64Digits) {
  const std::string digits(sixtyFourDigits);
  EXPECT_TRUE(isSHA256Hex(digits));
  for (const std::string& after : {std::string("0"), std::string("\n"), digits}) {
    EXPECT_FALSE(isSHA256Hex(digits + after)) << after;
  }
}

}  // namespace
}  // namespace velmora::internal
