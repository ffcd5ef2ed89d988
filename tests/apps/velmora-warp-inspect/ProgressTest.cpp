#include "Progress.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::inspect {
namespace {

using Lines = std::vector<std::string>;
using std::chrono::milliseconds;

class ProgressTest : public testing::Test {
 protected:
  /// One more file is done after so long.
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

TEST_F(ProgressTest, isShownFromTheFirstSecondOn) {
  progress->begin(4);
  advanceAfter(milliseconds(999));
  progress->hide();
  EXPECT_EQ(shown, Lines());
  advanceAfter(milliseconds(1));
  EXPECT_EQ(shown, Lines{"\r\x1b[K[############------------] 2 of 4 files"});
}

TEST_F(ProgressTest, changesTenTimesASecondAtMost) {
  progress->begin(1000);
  advanceAfter(milliseconds(1000));
  for (int file = 0; file < 100; ++file) {
    advanceAfter(milliseconds(10));
  }
  EXPECT_EQ(shown.size(), 11U);
}

TEST_F(ProgressTest, isErasedOnceAndComesBackWhenItIsDue) {
  progress->begin(3);
  advanceAfter(milliseconds(2000));
  progress->hide();
  progress->hide();
  advanceAfter(milliseconds(99));
  EXPECT_EQ(shown, (Lines{"\r\x1b[K[########----------------] 1 of 3 files", "\r\x1b[K"}));
  advanceAfter(milliseconds(1));
  EXPECT_EQ(shown.back(), "\r\x1b[K[########################] 3 of 3 files");
  progress.reset();
  ASSERT_EQ(shown.size(), 4U);
  EXPECT_EQ(shown.back(), "\r\x1b[K");
}

TEST_F(ProgressTest, countsEachRunFromItsBeginning) {
  progress->begin(1);
  advanceAfter(milliseconds(500));
  progress->begin(1);
  advanceAfter(milliseconds(600));
  EXPECT_EQ(shown, Lines());
}

TEST(ProgressBars, withoutATerminalAreNoneAndAskNoTime) {
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
