#include "json/streaming/ChunkedDocument.h"
#include "tests/json/JSONCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

/// A token by its position in the document, and the byte at this position.
struct Token {
  std::size_t place;
  char byte;

  bool operator==(const Token&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Token& token) {
  return out << token.byte << " at " << token.place;
}

using Tokens = std::vector<Token>;

/// Delivers a text in portions of at most `portion` bytes.
ChunkedDocument::ReadSome portions(std::string text, std::size_t portion) {
  return [text = std::move(text), portion, position = std::size_t{0}](char* room,
                                                                      std::size_t size) mutable {
    EXPECT_GT(size, 0);
    const std::size_t count = text.copy(room, std::min(size, portion), position);
    position += count;
    return count;
  };
}

/// Walks to the end and takes all tokens of each chunk. std::nullopt when the walk ends early.
std::optional<Tokens> walk(ChunkedDocument& chunks, const std::string& document) {
  Tokens tokens;
  std::size_t begin = 0;
  do {
    if (!chunks.advance(0)) {
      return std::nullopt;
    }
    const std::string_view text = chunks.text();
    EXPECT_EQ(text, std::string_view(document).substr(begin, text.size()));
    EXPECT_EQ(*(text.data() + text.size()), '\0');
    const std::uint32_t* token = chunks.tokens();
    for (; *token != text.size(); ++token) {
      tokens.push_back({begin + *token, text[*token]});
    }
    EXPECT_TRUE(std::all_of(token, token + tokenLookAhead,
                            [&](std::uint32_t place) { return place == text.size(); }));
    begin += text.size();
  } while (!chunks.isLast());
  EXPECT_EQ(begin, document.size());
  return tokens;
}

std::optional<Tokens> walkInMemory(const std::string& document, std::size_t chunkLength) {
  ChunkBuffer memory;
  std::string bytes = document;
  std::optional<Tokens> tokens;
  {
    ChunkedDocument chunks(bytes, memory, chunkLength);
    tokens = walk(chunks, document);
  }
  EXPECT_EQ(bytes, document);
  return tokens;
}

std::optional<Tokens> walkStream(const std::string& document, std::size_t chunkLength,
                                 std::size_t portion) {
  ChunkBuffer memory;
  ChunkedDocument chunks(portions(document, portion), memory, chunkLength);
  return walk(chunks, document);
}

std::vector<std::size_t> chunkLengths() {
  std::vector<std::size_t> lengths;
  for (std::size_t length = 1; length <= 130; ++length) {
    lengths.push_back(length);
  }
  lengths.insert(lengths.end(), {200, 257, 500, 1000});
  return lengths;
}

struct ChunksCase {
  const char* name;
  std::string document;
  /// Whether the walk reaches the end.
  bool isWhole = true;
};

const std::vector<ChunksCase> documents = {
    {"empty", ""},
    {"blank", " "},
    {"number", "12"},
    {"compact", "[{\"a\":1},{\"b\":\"x\"},{\"c\":[]},{\"d\":null}]"},
    {"longerCompact", "[" + repeated("{\"key\":\"value\",\"n\":1},", 40) + "{\"k\":2}]"},
    {"pretty", "[\n  {\n    \"a\" : 1\n  },\n  {\n    \"b\" : [\n\n    ]\n  }\n]\n"},
    {"carriageReturns", "[\r\n  {\r\n    \"a\" : 1\r\n  }\r\n]\r\n"},
    {"lineBreaksOnly", repeated("\n", 300)},
    {"lineBreaksBetweenNumbers", repeated("123456789\n", 40)},
    {"noPlaceForACut", "[" + repeated("{\"1\":\"a\"}, {\"2\":\"b\"},", 40) + "1]"},
    {"oneLongString", '"' + std::string(700, 'x') + '"'},
    {"blanksOfManyChunks", "[1," + std::string(700, ' ') + "\n" + std::string(300, ' ') + "2]"},
    {"blanksAfter", "[1]\n" + std::string(700, ' ')},
    {"lineBreaksAfter", "[1]" + repeated("\n", 300)},
    {"blanksBefore", repeated(" \n", 300) + "[1]"},
    {"cutsInStrings", R"(["},{","a},{\"b","},{\"b\"","},{\\","},{\"b},{\"c"])"},
    {"cutsInStringsRepeated", "[" + repeated(R"("a},{\"b",{"c":"},{"},{"d":1},)", 40) + "1]"},
    {"backslashesBeforeCuts", R"([{"a":"\\"},{"b":"\\\\"},{"c":"\\\""},{"d":"\""}])"},
    {"nextObjectWithoutALetter", R"([{"a":1},{"":2},{"1":3},{"_":4},{"\u0061":5}])"},
    {"nextObjectAfterBlanks", "[{\"a\":1}, {\"b\":2} ,{\"c\":3},{ \"d\":4}]"},
    {"nonASCII", "[" + repeated("\"\u00e9\U0001F600\",\n", 40) + "1]"},
    {"NULOutside", "[1,\n\0\n,2]"s},
    {"NULsOnly", std::string(200, '\0')},
    {"bytesBetweenTokens", "[1,\nx\\\n\"a\"b\n]"},
    {"backslashBeforeALineBreak", "[1,\\\n\"a\"\n]"},
    {"notUTF8", "[\n\"\xFF\"\n]", false},
    {"notUTF8AtTheEnd", repeated("1\n", 200) + "\xC3", false},
    {"cutCodePointAtTheEnd", repeated("1\n", 200) + "\xE6\x97", false},
    {"cutCodePointBeforeALineBreak", "[" + repeated("1,\n", 30) + "\xE6\x97\n1]", false},
    {"notUTF8OverALineBreak", "[\"\",\xC3\n\xA9]", false},
    {"notUTF8OverACut", repeated("{\"a\":1},", 30) + "\xE2\x82},{\"a\":1},\xAC", false},
    {"noEndOfAString", "[1,\n2,\n\"a", false},
    {"noEndOfAStringOverALineBreak", "[1,\n\"a\nb\",\n2]", false},
    {"noEndOfAStringOverACut", "[1,\"a},{\"b\",2\n]", false},
    {"stringsThatEndAtLineBreaks", "[\"a\n\",\"b\n\"]", false},
    {"controlCharacterInAString", "[1,\n2,\n\"\t\"]", false},
    {"NULInAString", "[1,\n2,\n\"\0\"]"s, false},
    {"escapedLineBreak", "[1,\n\"a\\\nb\"]", false},
};

TEST(ChunkedDocumentTest, tokensAreTheSameForAnyChunkLength) {
  for (const ChunksCase& row : documents) {
    SCOPED_TRACE(row.name);
    const std::optional<Tokens> tokens = walkInMemory(row.document, row.document.size() + 1);
    EXPECT_EQ(tokens.has_value(), row.isWhole);
    for (const std::size_t length : chunkLengths()) {
      EXPECT_EQ(walkInMemory(row.document, length), tokens) << length;
      for (const std::size_t portion : {1U, 2U, 7U, 64U, 10'000U}) {
        EXPECT_EQ(walkStream(row.document, length, portion), tokens) << length << ' ' << portion;
      }
    }
  }
}

/// The length of the text from the middle token of a chunk to its end.
std::size_t lengthOfSecondHalf(const ChunkedDocument& chunks) {
  const std::uint32_t* const begin = chunks.tokens();
  const std::uint32_t* end = begin;
  while (*end != chunks.text().size()) {
    ++end;
  }
  return chunks.text().size() - begin[(end - begin) / 2];
}

TEST(ChunkedDocumentTest, nextChunkBeginsWithTheUnreadText) {
  for (const ChunksCase& row : documents) {
    SCOPED_TRACE(row.name);
    for (const std::size_t chunkLength : {1U, 2U, 5U, 16U, 50U, 1000U}) {
      ChunkBuffer memory;
      ChunkedDocument chunks(portions(row.document, 7), memory, chunkLength);
      std::size_t begin = 0;
      std::size_t unread = 0;
      while (!chunks.isLast() && chunks.advance(unread)) {
        const std::string_view text = chunks.text();
        EXPECT_EQ(text, std::string_view(row.document).substr(begin, text.size()));
        unread = unread == 0 ? lengthOfSecondHalf(chunks) : 0;
        begin += text.size() - (chunks.isLast() ? 0 : unread);
      }
      EXPECT_EQ(begin == row.document.size(), row.isWhole) << chunkLength;
    }
  }
}

TEST(ChunkedDocumentTest, chunksEndAtTheLastPossiblePosition) {
  std::string document = "[{\"a\":1},{\"b\":2},{\"c\":3}]";
  ChunkBuffer memory;
  ChunkedDocument chunks(document, memory, 19);
  ASSERT_TRUE(chunks.advance(0));
  EXPECT_EQ(chunks.text(), "[{\"a\":1},");
  EXPECT_FALSE(chunks.isLast());
  ASSERT_TRUE(chunks.advance(0));
  EXPECT_EQ(chunks.text(), "{\"b\":2},{\"c\":3}]");
  EXPECT_TRUE(chunks.isLast());
}

TEST(ChunkedDocumentTest, unreadChunksBecomeLonger) {
  const std::string document = repeated("1,\n", 100);
  ChunkBuffer memory;
  ChunkedDocument chunks(portions(document, 7), memory, 10);
  ASSERT_TRUE(chunks.advance(0));
  EXPECT_EQ(chunks.text().size(), 9);
  ASSERT_TRUE(chunks.advance(9));
  EXPECT_EQ(chunks.text().size(), 18);
  ASSERT_TRUE(chunks.advance(18));
  EXPECT_EQ(chunks.text().size(), 39);
  ASSERT_TRUE(chunks.advance(36));
  EXPECT_EQ(chunks.text().size(), 9);
}

TEST(ChunkedDocumentTest, documentIsRestoredAfterAnyPartialWalk) {
  for (const ChunksCase& row : documents) {
    for (const std::size_t chunkLength : {1U, 3U, 10U, 40U}) {
      for (int steps = 0; steps < 20; ++steps) {
        ChunkBuffer memory;
        std::string bytes = row.document;
        {
          ChunkedDocument chunks(bytes, memory, chunkLength);
          for (int step = 0; step < steps && !chunks.isLast(); ++step) {
            if (!chunks.advance(0)) {
              break;
            }
          }
        }
        ASSERT_EQ(bytes, row.document) << row.name << ' ' << chunkLength << ' ' << steps;
      }
    }
  }
}

TEST(ChunkedDocumentTest, memoryIsReusedForTheNextDocument) {
  ChunkBuffer memory;
  for (int round = 0; round < 2; ++round) {
    for (const ChunksCase& row : documents) {
      for (const std::size_t chunkLength : {700U, 5U, 60U}) {
        ChunkedDocument chunks(portions(row.document, 11), memory, chunkLength);
        EXPECT_EQ(walk(chunks, row.document).has_value(), row.isWhole) << row.name;
      }
    }
  }
}

TEST(ChunkedDocumentTest, errorOfReadingIsPassedOn) {
  for (std::size_t fine = 0; fine < 60; ++fine) {
    ChunkBuffer memory;
    const ChunkedDocument::ReadSome whole = portions(repeated("1,\n", 20), 1);
    ChunkedDocument chunks(
        [&, count = std::size_t{0}](char* room, std::size_t size) mutable {
          if (count++ == fine) {
            throw std::domain_error("no more");
          }
          return whole(room, size);
        },
        memory, 10);
    std::size_t length = 0;
    EXPECT_THROW(
        while (!chunks.isLast() && chunks.advance(0)) { length += chunks.text().size(); },
        std::domain_error)
        << fine;
    EXPECT_LE(length, fine);
  }
}

TEST(ChunkedDocumentTest, nothingIsReadAfterTheEnd) {
  ChunkBuffer memory;
  int endCount = 0;
  const ChunkedDocument::ReadSome whole = portions("[1,\n2]", 4);
  ChunkedDocument chunks(
      [&](char* room, std::size_t size) {
        const std::size_t count = whole(room, size);
        endCount += count == 0 ? 1 : 0;
        return count;
      },
      memory, 4);
  while (!chunks.isLast()) {
    ASSERT_TRUE(chunks.advance(0));
  }
  EXPECT_EQ(endCount, 1);
}

TEST(ChunkedDocumentTest, skipsAByteOrderMark) {
  const std::string document = "[1,\n2]";
  const std::string marked = "\xEF\xBB\xBF" + document;
  for (const std::size_t chunkLength : {1U, 2U, 3U, 4U, 100U}) {
    ChunkBuffer memory;
    std::string bytes = marked;
    ChunkedDocument chunks(bytes, memory, chunkLength);
    const std::optional<Tokens> tokens = walk(chunks, document);
    EXPECT_EQ(tokens, walkInMemory(document, chunkLength));
    ChunkedDocument stream(portions(marked, 1), memory, chunkLength);
    EXPECT_EQ(walk(stream, document), tokens);
  }
}

TEST(ChunkedDocumentTest, knowsWhatTheDocumentMayBeginWith) {
  struct {
    const char* document;
    bool mayBegin;
  } const rows[] = {
      {"{}", true},  {" \n\t\r{", true}, {"", true},    {"  ", true}, {"\xEF\xBB\xBF {", true},
      {"[{", false}, {"\"{\"", false},   {"1{", false},
  };
  for (const auto& row : rows) {
    ChunkBuffer memory;
    ChunkedDocument stream(portions(row.document, 2), memory, 100);
    EXPECT_EQ(stream.mayBeginWith('{'), row.mayBegin) << row.document;
    EXPECT_TRUE(stream.advance(0));
  }
}

/// Walks through one string by cutting it. Returns the content of the pieces; std::nullopt when the
/// walk fails.
std::optional<std::string> contentOfPieces(ChunkedDocument& chunks, std::size_t& pieceCount) {
  std::string content;
  do {
    if (!chunks.advanceThroughString()) {
      return std::nullopt;
    }
    const std::string_view piece = chunks.text();
    EXPECT_TRUE(piece.starts_with('"') && piece.ends_with('"')) << piece;
    EXPECT_EQ(chunks.tokens()[0], 0);
    EXPECT_EQ(chunks.tokens()[1], piece.size());
    content += piece.substr(1, piece.size() - 2);
    ++pieceCount;
  } while (chunks.endsInString());
  EXPECT_TRUE(chunks.isLast());
  return content;
}

TEST(ChunkedDocumentTest, cutsALongStringBetweenCharactersAndEscapes) {
  const std::string letters = repeated("abcdefghij", 30);
  const std::string contents[] = {
      letters,
      repeated("\\\"", 100),
      repeated("\\\\", 100),
      repeated("\\u00e9", 60),
      repeated("\\uD83D\\uDE00", 60),
      repeated("x\\ud83d\\ude00\\n", 60),
      repeated("\u00e9", 100),
      repeated("a\U0001F600", 60),
      repeated(",:{}[] ", 60),
  };
  for (const std::string& content : contents) {
    const std::string document = '"' + content + '"';
    for (std::size_t chunkLength = 1; chunkLength < 60; ++chunkLength) {
      ChunkBuffer memory;
      std::string bytes = document;
      std::size_t pieceCount = 0;
      {
        ChunkedDocument chunks(bytes, memory, chunkLength);
        EXPECT_EQ(contentOfPieces(chunks, pieceCount), content) << chunkLength;
      }
      EXPECT_EQ(bytes, document);
      EXPECT_GT(pieceCount, 2);
      ChunkedDocument stream(portions(document, 7), memory, chunkLength);
      EXPECT_EQ(contentOfPieces(stream, pieceCount), content) << chunkLength;
    }
  }
}

TEST(ChunkedDocumentTest, findsTheFaultsOfALongString) {
  const std::string letters(300, 'x');
  for (const std::string& document :
       {'"' + letters, '"' + letters + "\n" + letters + '"', '"' + letters + "\x80" + letters + '"',
        '"' + letters + repeated("\x80", 100) + letters + '"',
        '"' + letters + "\xE2\x82" + letters + '"'}) {
    for (std::size_t chunkLength = 16; chunkLength < 60; ++chunkLength) {
      ChunkBuffer memory;
      ChunkedDocument chunks(portions(document, 7), memory, chunkLength);
      std::size_t pieceCount = 0;
      EXPECT_EQ(contentOfPieces(chunks, pieceCount), std::nullopt) << chunkLength;
    }
  }
}

TEST(ChunkedDocumentTest, goesOnWithAReplacement) {
  const std::string document = "[1,\n2,\n3,\n4,\n5]";
  const std::string replacement = "[" + repeated("\"0\",", 20) + "7,";
  for (const std::size_t chunkLength : {1U, 4U, 7U, 100U}) {
    ChunkBuffer memory;
    std::string bytes = document;
    {
      ChunkedDocument chunks(bytes, memory, chunkLength);
      std::size_t readLength = 0;
      do {
        ASSERT_TRUE(chunks.advance(0));
        readLength += chunks.text().size();
      } while (readLength < 7);
      chunks.replaceRead(replacement, readLength - 7);
      EXPECT_FALSE(chunks.isLast());
      std::string rest;
      do {
        ASSERT_TRUE(chunks.advance(0));
        EXPECT_TRUE(!rest.empty() || chunks.text().size() > replacement.size());
        rest += chunks.text();
      } while (!chunks.isLast());
      EXPECT_EQ(rest, replacement + document.substr(7));
    }
    EXPECT_EQ(bytes, document);
  }
}

TEST(ChunkedDocumentTest, dropsManyBlanksOfAnUnreadChunk) {
  const std::string document = "[1," + std::string(1'000'000, ' ') + "2]";
  ChunkBuffer memory;
  ChunkedDocument chunks(portions(document, 1000), memory, 100);
  std::size_t longest = 0;
  std::size_t unread = 0;
  while (!chunks.isLast()) {
    ASSERT_TRUE(chunks.advance(unread));
    unread = chunks.text().size();
    longest = std::max(longest, unread);
  }
  EXPECT_LT(longest, 20'000);
  EXPECT_TRUE(chunks.text().starts_with("[1, "));
  EXPECT_TRUE(chunks.text().ends_with(" 2]"));
}

TEST(ChunkedDocumentTest, refusesALongTokenThatIsNoStringAndNoNumber) {
  for (const char byte : {'\0', 'x', '\\', '\x7F'}) {
    std::size_t readLength = 0;
    ChunkBuffer memory;
    ChunkedDocument chunks(
        [&](char* room, std::size_t size) {
          readLength += size;
          std::fill_n(room, size, byte);
          return size;
        },
        memory, 10'000);
    EXPECT_FALSE(chunks.advance(0));
    EXPECT_LT(readLength, 20'000);
  }
}

TEST(ChunkedDocumentTest, limitsTheChunksOfAStream) {
  struct {
    const char* name;
    std::string beginning;
    std::string repeatedText;
    std::size_t maxLength;
  } const rows[] = {
      {"string", "\"", "x", 100'000},
      {"number", "", "1", 100'000},
      {"unreadTokens", "[", "1,", 100'000},
      {"unreadTokensOfAnyLength", "[", "1,", ChunkedDocument::anyLength},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ChunkBuffer memory;
    std::string text = row.beginning;
    std::size_t readLength = 0;
    ChunkedDocument chunks(
        [&](char* room, std::size_t size) {
          while (text.size() < size) {
            text += row.repeatedText;
          }
          const std::size_t count = text.copy(room, size);
          text.erase(0, count);
          readLength += count;
          return count;
        },
        memory);
    const auto walkUnread = [&] {
      std::size_t unread = 0;
      while (chunks.advance(unread, row.maxLength)) {
        unread = chunks.text().size();
      }
    };
    EXPECT_THROW(walkUnread(), std::length_error);
    EXPECT_LT(readLength, std::min(row.maxLength, maxChunkMemory) + documentChunkLength);
  }
}

}  // namespace
}  // namespace velmora::internal
