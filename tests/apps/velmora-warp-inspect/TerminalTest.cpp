#include "Terminal.h"
#include "platform/linux/Environment.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::inspect {
namespace {

using Lines = std::vector<std::string>;
using std::chrono::milliseconds;

TEST(StyledWords, areAlignedWithAndWithoutColours) {
  EXPECT_EQ(styledWord("valid", Tone::good, Style::plain, 8), "valid   ");
  EXPECT_EQ(styledWord("valid", Tone::good, Style::coloured, 8), "\x1b[32mvalid\x1b[0m   ");
  EXPECT_EQ(styledWord("note", Tone::doubtful, Style::coloured, 4), "\x1b[33mnote\x1b[0m");
  EXPECT_EQ(styledWord("invalid", Tone::bad, Style::coloured, 2), "\x1b[31minvalid\x1b[0m");
}

TEST(Terminals, areUsedAccordingToTheEnvironment) {
  const struct {
    Environment::Variables variables;
    bool wantsColour;
    bool canErase;
  } rows[] = {
      {{}, false, false},
      {{{"TERM", ""}}, false, false},
      {{{"TERM", "xterm-256color"}}, true, true},
      {{{"TERM", "dumb"}}, false, false},
      {{{"TERM", "xterm"}, {"NO_COLOR", "1"}}, false, true},
      {{{"TERM", "xterm"}, {"NO_COLOR", ""}}, true, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.variables));
    EXPECT_EQ(wantsColour(Environment(row.variables)), row.wantsColour);
    EXPECT_EQ(canErase(Environment(row.variables)), row.canErase);
  }
}

TEST(Lines, areIndented) {
  EXPECT_EQ(indentedLine(2, "a"), "  a\n");
  EXPECT_EQ(indentedLine(0, ""), "\n");
}

TEST(Counts, haveTheirNumber) {
  EXPECT_EQ(counted(0, "file", "files"), "0 files");
  EXPECT_EQ(counted(1, "file", "files"), "1 file");
  EXPECT_EQ(counted(2, "entry", "entries"), "2 entries");
}

class ProgressTest : public testing::Test {
 protected:
  /// Another file is done after `time`.
  void advanceAfter(milliseconds time) {
    now += time;
    progress->advance();
  }

  Progress::Time now;
  Lines shown;
  std::optional<Progress> progress{std::in_place,
                                   [this](std::string_view bytes) { shown.emplace_back(bytes); },
                                   [this] { return now; }};
};

TEST_F(ProgressTest, isShownAfterOneSecond) {
  progress->begin(4);
  advanceAfter(milliseconds(999));
  progress->hide();
  EXPECT_EQ(shown, Lines());
  advanceAfter(milliseconds(1));
  EXPECT_EQ(shown, Lines{"\r\x1b[K[##########----------] 50 %"});
}

TEST_F(ProgressTest, changesTenTimesASecondAtMost) {
  progress->begin(1000);
  advanceAfter(milliseconds(1000));
  for (int file = 0; file < 100; ++file) {
    advanceAfter(milliseconds(10));
  }
  EXPECT_EQ(shown.size(), 11U);
}

TEST_F(ProgressTest, isErasedOnceAndShownAgainLater) {
  progress->begin(3);
  advanceAfter(milliseconds(2000));
  progress->hide();
  progress->hide();
  advanceAfter(milliseconds(99));
  EXPECT_EQ(shown, (Lines{"\r\x1b[K[######--------------] 33 %", "\r\x1b[K"}));
  advanceAfter(milliseconds(1));
  EXPECT_EQ(shown.back(), "\r\x1b[K[####################] 100 %");
  progress.reset();
  ASSERT_EQ(shown.size(), 4U);
  EXPECT_EQ(shown.back(), "\r\x1b[K");
}

TEST_F(ProgressTest, movesWithinAFile) {
  progress->begin(2);
  advanceAfter(milliseconds(2000));
  for (const double part : {0.0, 0.25, 0.5, 1.0}) {
    now += milliseconds(100);
    progress->advanceWithinFile(part);
  }
  EXPECT_EQ(shown.back(), "\r\x1b[K[###################-] 99 %");
  advanceAfter(milliseconds(100));
  EXPECT_EQ(shown,
            (Lines{"\r\x1b[K[##########----------] 50 %", "\r\x1b[K[##########----------] 50 %",
                   "\r\x1b[K[############--------] 62 %", "\r\x1b[K[###############-----] 75 %",
                   "\r\x1b[K[###################-] 99 %", "\r\x1b[K[####################] 100 %"}));
}

TEST_F(ProgressTest, fitsThirtyColumns) {
  progress->begin(1'000'000);
  for (const double part : {0.0, 0.5, 1.0}) {
    now += milliseconds(2000);
    progress->advanceWithinFile(part);
    advanceAfter(milliseconds(2000));
  }
  for (const std::string& line : shown) {
    EXPECT_LT(line.size() - std::string_view("\r\x1b[K").size(), 30U) << line;
  }
}

TEST_F(ProgressTest, countsEachRunFromZero) {
  progress->begin(1);
  advanceAfter(milliseconds(500));
  progress->begin(1);
  advanceAfter(milliseconds(600));
  EXPECT_EQ(shown, Lines());
}

TEST(ProgressBars, areAbsentWithoutATerminalAndReadNoClock) {
  int questions = 0;
  Progress progress(nullptr, [&] {
    ++questions;
    return Progress::Time();
  });
  progress.begin(1);
  progress.advance();
  progress.hide();
  EXPECT_EQ(questions, 0);
}

}  // namespace
}  // namespace velmora::inspect
