// Members of records as programs write them: the same ones in the same order and form each time.
#pragma once

#include "json/KeyTable.h"
#include "json/QuickTokens.h"
#include "json/RecordFields.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace velmora {

/// Expects what followed the value of a field one of the last times: byte for byte the same comma,
/// blanks, key and colon. Of two kinds, that is: a member that may be absent is there or not.
template <RecordWithFields Record>
class MemberPrediction {
 public:
  /// There is no member more; the object's end has not been taken.
  static constexpr std::size_t end = fieldCount<Record>;
  /// There is something else.
  static constexpr std::size_t none = end + 1;

  /// Takes what stands before a value: the object's beginning or a comma, a key, a colon. Returns
  /// the field's index, or `none` also for a key that is none of the record's. `previous` is the
  /// field before, `end` at the beginning.
  std::size_t take(QuickTokens& tokens, std::size_t previous) {
    const Follower& expected = followers_[previous].usual;
    return tokens.take(expected.start) ? expected.field : takeOther(tokens, previous);
  }

 private:
  struct alignas(128) Follower {
    MemberStart start;
    std::size_t field = 0;
  };

  struct Followers {
    Follower usual;
    Follower other;
  };

  /// How often the other follower of a field has come since a record. The usual one is not counted:
  /// writing that down each time took 5 % of the time of reading.
  struct OtherCount {
    std::uint64_t count = 0;
    std::uint64_t firstRecord = 0;
  };

  /// One function with all that it calls, and kept out of the many places that take a member.
  [[gnu::flatten, gnu::noinline]] std::size_t takeOther(QuickTokens& tokens, std::size_t previous) {
    const bool isFirst = previous == end;
    if (!isFirst && tokens.isNext('}')) {
      ++recordCount_;
      return end;
    }
    Followers& followers = followers_[previous];
    if (tokens.take(followers.other.start)) {
      const std::size_t field = followers.other.field;
      countOther(previous);
      return field;
    }
    const char* const begin = tokens.position();
    std::string_view key;
    if (!tokens.take(isFirst ? '{' : ',') || !tokens.take(key) || !tokens.take(':')) {
      return none;
    }
    const std::size_t field = keyTable.find(key);
    if (field == keyTable.none) {
      return none;
    }
    if (isLearning(begin)) {
      const std::string_view text(begin, static_cast<std::size_t>(tokens.position() - begin));
      followers.other = followers.usual;
      followers.usual = {.start = MemberStart(text), .field = field};
      otherCounts_[previous] = {.count = 0, .firstRecord = recordCount_};
    }
    return field;
  }

  /// Has expected first what comes in more than half of the records.
  void countOther(std::size_t previous) {
    OtherCount& other = otherCounts_[previous];
    ++other.count;
    if (other.count > mostByChance && other.count > (recordCount_ - other.firstRecord) / 2) {
      std::swap(followers_[previous].usual, followers_[previous].other);
      other = {.count = 0, .firstRecord = recordCount_};
    }
  }

  /// Whether there is an order to learn, after an unexpected member at `place`. Learning and
  /// expecting in vain would take as long again as reading what comes in no order.
  bool isLearning(const char* place) {
    if (pause_ > 0) {
      --pause_;
      return false;
    }
    const auto distance = reinterpret_cast<std::uintptr_t>(place) - lastUnexpected_;
    lastUnexpected_ = reinterpret_cast<std::uintptr_t>(place);
    unexpectedInRow_ = distance < farApart ? unexpectedInRow_ + 1 : 0;
    if (unexpectedInRow_ < mostInRow) {
      return true;
    }
    followers_ = {};
    unexpectedInRow_ = 0;
    pause_ = longPause;
    return false;
  }

  /// In bytes: more than a member, but for a long one, and less than a record takes.
  static constexpr std::uintptr_t farApart = 256;
  /// Some records of new members each, and some more in another order.
  static constexpr int mostInRow = 8 * static_cast<int>(fieldCount<Record>);
  static constexpr int longPause = 16 * mostInRow;

  static constexpr KeyTable<fieldCount<Record>> keyTable{fieldKeys<Record>};

  static constexpr std::uint64_t mostByChance = 4;

  std::array<Followers, fieldCount<Record> + 1> followers_ = {};
  std::array<OtherCount, fieldCount<Record> + 1> otherCounts_ = {};
  std::uint64_t recordCount_ = 0;
  std::uintptr_t lastUnexpected_ = 0;
  int unexpectedInRow_ = 0;
  int pause_ = 0;
};

}  // namespace velmora
