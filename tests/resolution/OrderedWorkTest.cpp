#include "resolution/OrderedWork.h"
#include "tests/resolution/Meeting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <functional>
#include <limits>
#include <mutex>
#include <new>
#include <numeric>
#include <set>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace velmora {
namespace {

using Numbers = std::vector<std::size_t>;

constexpr std::size_t asManyAsThereAre = std::numeric_limits<std::size_t>::max();

Numbers numbersUpTo(std::size_t count) {
  Numbers numbers(count);
  std::iota(numbers.begin(), numbers.end(), std::size_t{0});
  return numbers;
}

std::string messageOf(const std::exception_ptr& fault) {
  try {
    std::rethrow_exception(fault);
  } catch (const std::exception& error) {
    return error.what();
  }
}

/// Work that keeps a record of what was done and handed over.
class Work : public testing::Test {
 protected:
  /// With up to so many helpers, from after the first piece on.
  void perform(std::size_t pieceCount, std::size_t helperCount) {
    doneTimes = std::vector<std::atomic<int>>(pieceCount);
    performInOrder({.pieceCount = pieceCount,
                    .makeWorker = [this]() -> PieceWorker {
                      ++workerCount;
                      makingWorker();
                      return [this](std::size_t piece) {
                        ++doneTimes[piece];
                        doing(piece);
                      };
                    },
                    .helpersWorthStarting =
                        [this, helperCount](std::size_t remaining) {
                          askedAt.push_back(remaining);
                          return helperCount;
                        },
                    .didFinish =
                        [this](std::size_t piece, const std::exception_ptr& fault) {
                          EXPECT_EQ(std::this_thread::get_id(), caller);
                          handedOver.push_back(piece);
                          if (fault) {
                            faults.push_back(std::to_string(piece) + ": " + messageOf(fault));
                          }
                          handing(piece);
                        }},
                   [this](std::function<void()> body) {
                     starting();
                     ++startedThreads;
                     return startThread([this, body = std::move(body)] {
                       body();
                       ++endedThreads;
                     });
                   });
  }

  void expectAllDoneOnce() const {
    EXPECT_TRUE(std::ranges::all_of(doneTimes, [](int times) { return times == 1; }));
    EXPECT_EQ(handedOver, numbersUpTo(doneTimes.size()));
    EXPECT_EQ(endedThreads, startedThreads);
  }

  /// What the test adds to each step.
  std::function<void()> makingWorker = [] {};
  std::function<void(std::size_t)> doing = [](std::size_t) {};
  std::function<void(std::size_t)> handing = [](std::size_t) {};
  std::function<void()> starting = [] {};

  const std::thread::id caller = std::this_thread::get_id();
  std::vector<std::atomic<int>> doneTimes;
  std::atomic<int> workerCount = 0;
  Numbers askedAt;
  Numbers handedOver;
  std::vector<std::string> faults;
  int startedThreads = 0;
  std::atomic<int> endedThreads = 0;
};

TEST_F(Work, withoutPiecesIsNone) {
  perform(0, asManyAsThereAre);
  EXPECT_TRUE(handedOver.empty());
  EXPECT_EQ(startedThreads, 0);
}

TEST_F(Work, isDoneByTheCallerWhereHelpersAreNotWorthIt) {
  doing = [this](std::size_t) { EXPECT_EQ(std::this_thread::get_id(), caller); };
  perform(4, 0);
  expectAllDoneOnce();
  EXPECT_EQ(startedThreads, 0);
  EXPECT_EQ(workerCount, 1);
  // Not for the last piece, which the caller takes.
  EXPECT_EQ(askedAt, (Numbers{3, 2}));
}

TEST_F(Work, ofTheCallerAloneIsHandedOverPieceByPiece) {
  doing = [this](std::size_t piece) { EXPECT_EQ(handedOver, numbersUpTo(piece)); };
  perform(4, 0);
  expectAllDoneOnce();
}

TEST_F(Work, startsAHelperLessThanPiecesRemain) {
  perform(4, asManyAsThereAre);
  expectAllDoneOnce();
  EXPECT_EQ(startedThreads, 2);
  EXPECT_EQ(askedAt, Numbers{3});
}

TEST_F(Work, startsNoHelperForTheLastPiece) {
  perform(2, asManyAsThereAre);
  expectAllDoneOnce();
  EXPECT_EQ(startedThreads, 0);
}

TEST_F(Work, isDoneAtTheSameTime) {
  Meeting meeting(3);
  doing = [&](std::size_t piece) {
    if (piece > 0) {
      meeting.attend();
    }
  };
  perform(4, 2);
  EXPECT_TRUE(meeting.tookPlace());
  expectAllDoneOnce();
  EXPECT_EQ(startedThreads, 2);
  EXPECT_EQ(workerCount, 3);
}

TEST_F(Work, isHandedOverInOrderWhateverIsFinishedFirst) {
  for (const std::size_t count : {4U, 50U}) {
    // So that the piece between them ends before the first of them, which another thread has.
    Meeting meeting(2);
    doing = [&](std::size_t piece) {
      if (piece == 1 || piece == 3) {
        meeting.attend();
      }
    };
    handedOver.clear();
    perform(count, 1);
    EXPECT_TRUE(meeting.tookPlace());
    expectAllDoneOnce();
  }
}

TEST_F(Work, ofManyPiecesIsDoneOnceEach) {
  perform(5000, 7);
  expectAllDoneOnce();
  EXPECT_EQ(startedThreads, 7);
}

TEST_F(Work, handsOverWhatAPieceThrows) {
  doing = [](std::size_t piece) {
    if (piece % 3 == 0) {
      throw std::runtime_error("piece " + std::to_string(piece));
    }
  };
  for (const std::size_t helpers : {0U, 1U, 7U}) {
    handedOver.clear();
    faults.clear();
    perform(8, helpers);
    expectAllDoneOnce();
    EXPECT_EQ(faults, (std::vector<std::string>{"0: piece 0", "3: piece 3", "6: piece 6"}));
  }
}

TEST_F(Work, passesOnWhatTheReceiverThrowsOnceTheHelpersHaveEnded) {
  handing = [](std::size_t piece) {
    if (piece == 1) {
      throw std::runtime_error("enough");
    }
  };
  EXPECT_THROW(perform(1000, 3), std::runtime_error);
  EXPECT_EQ(handedOver, numbersUpTo(2));
  EXPECT_EQ(startedThreads, 3);
  EXPECT_EQ(endedThreads, 3);
}

TEST_F(Work, beginsNoPieceAfterTheReceiverHasThrown) {
  handing = [](std::size_t piece) {
    if (piece == 1) {
      throw std::runtime_error("enough");
    }
  };
  EXPECT_THROW(perform(1000, 0), std::runtime_error);
  EXPECT_EQ(std::ranges::count_if(doneTimes, [](int times) { return times > 0; }), 2);
}

TEST_F(Work, goesOnWithoutAThreadThatCannotBeStarted) {
  for (const int available : {0, 1, 2}) {
    startedThreads = 0;
    endedThreads = 0;
    handedOver.clear();
    askedAt.clear();
    starting = [&] {
      if (startedThreads == available) {
        throw std::system_error(EAGAIN, std::generic_category());
      }
    };
    perform(50, 5);
    expectAllDoneOnce();
    EXPECT_EQ(startedThreads, available);
    EXPECT_EQ(askedAt, Numbers{49});
  }
}

TEST_F(Work, goesOnWithoutTheMemoryForAThread) {
  starting = [] { throw std::bad_alloc(); };
  perform(50, 5);
  expectAllDoneOnce();
}

TEST_F(Work, goesOnWithoutAHelperThatHasNoWorker) {
  makingWorker = [this] {
    if (std::this_thread::get_id() != caller) {
      throw std::bad_alloc();
    }
  };
  doing = [this](std::size_t) { EXPECT_EQ(std::this_thread::get_id(), caller); };
  perform(50, 3);
  expectAllDoneOnce();
  EXPECT_EQ(startedThreads, 3);
}

TEST_F(Work, isNotBegunByACallerWithoutAWorker) {
  makingWorker = [] { throw std::bad_alloc(); };
  EXPECT_THROW(perform(50, 3), std::bad_alloc);
  EXPECT_TRUE(handedOver.empty());
  EXPECT_EQ(startedThreads, 0);
}

}  // namespace
}  // namespace velmora
