#include "json/streaming/ValueSkipper.h"
#include "tests/json/JSONCases.h"
#include "tests/json/TokenizedText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

using Progress = ValueSkipper::Progress;

Progress skipped(const std::string& text, std::size_t outerDepth = 0) {
  TokenizedText document(text);
  ValueSkipper skipper;
  skipper.begin(outerDepth);
  return skipper.skip(document.tokens());
}

TEST(ValueSkipperTest, passesOverWhatTheStrictReaderAccepts) {
  for (const ReadCase& row : readCases) {
    SCOPED_TRACE(row.name);
    if (row.document.starts_with("\xEF\xBB\xBF")) {
      continue;
    }
    TokenizedText document(row.document + " , 1");
    ValueSkipper skipper;
    skipper.begin(0);
    EXPECT_EQ(skipper.skip(document.tokens()), Progress::complete);
    EXPECT_TRUE(document.tokens().isNext(','));
  }
}

TEST(ValueSkipperTest, refusesWhatTheStrictReaderRefuses) {
  for (const RefusedCase& row : refusedCases) {
    SCOPED_TRACE(row.name);
    if (row.tokens != TokenFault::none) {
      continue;
    }
    TokenizedText document(row.document);
    ValueSkipper skipper;
    skipper.begin(0);
    EXPECT_TRUE(skipper.skip(document.tokens()) != Progress::complete ||
                !document.tokens().atEnd());
  }
}

/// Passes over a value whose tokens come in two chunks.
Progress skippedInTwo(const std::vector<std::string>& tokens, std::size_t firstCount) {
  ValueSkipper skipper;
  skipper.begin(0);
  std::string parts[2];
  for (std::size_t number = 0; number < tokens.size(); ++number) {
    parts[number < firstCount ? 0 : 1] += tokens[number] + ' ';
  }
  TokenizedText first(parts[0]);
  const Progress progress = skipper.skip(first.tokens());
  if (progress != Progress::atEndOfChunk) {
    return progress;
  }
  TokenizedText second(parts[1]);
  return skipper.skip(second.tokens());
}

TEST(ValueSkipperTest, continuesInTheNextChunk) {
  const std::vector<std::string> value = {"{", "\"a\"", ":", "[", "1",     ",", "{",    "}", ",",
                                          "[", "]",     "]", ",", "\"b\"", ":", "\"\"", "}"};
  const std::vector<std::string> broken = {"{", "\"a\"", ":", "[", "1", ",", "{", "]", "}"};
  for (std::size_t count = 1; count < value.size(); ++count) {
    EXPECT_EQ(skippedInTwo(value, count), Progress::complete) << count;
  }
  for (std::size_t count = 1; count < broken.size(); ++count) {
    EXPECT_EQ(skippedInTwo(broken, count), Progress::broken) << count;
  }
}

TEST(ValueSkipperTest, continuesInAStringThatGoesOn) {
  for (const std::string_view beginning : {"\"a\"", "[\"a\"", "{\"a\"", "{\"a\":\"b\""}) {
    SCOPED_TRACE(beginning);
    const std::string end =
        beginning == "{\"a\""
            ? ":1}"
            : std::string("]}").substr(beginning[0] == '[' ? 0 : 1, beginning[0] == '"' ? 0 : 1);
    ValueSkipper skipper;
    skipper.begin(0);
    TokenizedText first{std::string(beginning)};
    EXPECT_EQ(skipper.skip(first.tokens(), /*endsInString=*/true), Progress::atEndOfChunk);
    TokenizedText middle("\"more\"");
    EXPECT_EQ(skipper.skip(middle.tokens(), /*endsInString=*/true), Progress::atEndOfChunk);
    TokenizedText last("\"rest\"" + end + ",");
    EXPECT_EQ(skipper.skip(last.tokens()), Progress::complete);
    EXPECT_TRUE(last.tokens().isNext(','));
  }
}

TEST(ValueSkipperTest, countsTheLevelsAroundTheValue) {
  for (const std::size_t outerDepth : {0U, 1U, 5U, 511U, 512U}) {
    const std::size_t room = maxJSONNesting - outerDepth;
    if (room > 0) {
      EXPECT_EQ(skipped(repeated("[", room) + repeated("]", room), outerDepth), Progress::complete);
    }
    EXPECT_EQ(skipped(repeated("{\"a\":", room + 1) + "1", outerDepth), Progress::broken);
  }
}

}  // namespace
}  // namespace velmora::internal
