// Recognises the members of records quickly, because a program writes those of each record in the
// same order and form.
#pragma once

#include "json/KeyTable.h"
#include "json/RecordFields.h"
#include "json/streaming/TokenCursor.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace velmora::internal {

/// Predicts the bytes between two values: comma, blanks, key and colon. It remembers the two most
/// recent continuations of each field, because an optional member is either present or not.
template <RecordWithFields Record>
class MemberPredictor {
 public:
  /// The object has no more members. Its closing brace has not been taken.
  static constexpr std::size_t end = fieldCount<Record>;
  /// The next tokens are no member.
  static constexpr std::size_t none = end + 1;
  /// The first of the indexes for members with an unknown key. Each such key has one of them, so
  /// that the members around it can be predicted, too.
  static constexpr std::size_t firstUnknown = none + 1;

  static constexpr bool isUnknown(std::size_t member) { return member >= firstUnknown; }

  /// Takes the tokens before a value: the opening brace or a comma, the key, the colon. Returns the
  /// index of the member. `previous` is the index of the previous one, or `end` before the first.
  std::size_t take(TokenCursor& tokens, std::size_t previous) {
    const Successor& expected = successors_[previous].primary;
    return tokens.take(expected.start) ? expected.field : takeOther(tokens, previous);
  }

 private:
  struct alignas(128) Successor {
    MemberPrefix start;
    std::size_t field = 0;
  };

  struct Successors {
    Successor primary;
    Successor secondary;
  };

  /// `count` is how often the secondary successor followed the field since the record
  /// `firstRecord`. Primary successors are not counted, because an increment for each member costs
  /// too much.
  struct SecondaryCount {
    std::uint64_t count = 0;
    std::uint64_t firstRecord = 0;
  };

  /// Inlines its callees, but is not inlined into the many callers of take().
  [[gnu::flatten, gnu::noinline]] std::size_t takeOther(TokenCursor& tokens, std::size_t previous) {
    const bool isFirst = previous == end;
    if (!isFirst && tokens.isNext('}')) {
      ++recordCount_;
      return end;
    }
    Successors& successors = successors_[previous];
    if (tokens.take(successors.secondary.start)) {
      const std::size_t field = successors.secondary.field;
      countSecondary(previous);
      return field;
    }
    const char* const begin = tokens.position();
    std::string_view key;
    if (!tokens.take(isFirst ? '{' : ',') || !tokens.take(key) || !tokens.take(':')) {
      return none;
    }
    const std::size_t known = keyTable.find(key);
    const std::size_t field = known == keyTable.none ? unknownField(key) : known;
    if (isLearning(begin)) {
      const std::string_view text(begin, static_cast<std::size_t>(tokens.position() - begin));
      successors.secondary = successors.primary;
      successors.primary = {.start = MemberPrefix(text), .field = field};
      secondaryCounts_[previous] = {.count = 0, .firstRecord = recordCount_};
    }
    return field;
  }

  static std::size_t unknownField(std::string_view key) {
    const std::size_t mixed =
        key.empty() ? 0 : key.size() + static_cast<unsigned char>(key.back()) * std::size_t{3};
    return firstUnknown + mixed % unknownCount;
  }

  /// Swaps the two if the secondary one has come in more than half of the records.
  void countSecondary(std::size_t previous) {
    SecondaryCount& secondary = secondaryCounts_[previous];
    ++secondary.count;
    if (secondary.count > maxByChance &&
        secondary.count > (recordCount_ - secondary.firstRecord) / 2) {
      std::swap(successors_[previous].primary, successors_[previous].secondary);
      secondary = {.count = 0, .firstRecord = recordCount_};
    }
  }

  /// Whether to learn from an unexpected member at `place`. After many unexpected members in a row
  /// the answer is no for a while, because members in random order cannot be predicted.
  bool isLearning(const char* place) {
    if (pause_ > 0) {
      --pause_;
      return false;
    }
    const auto distance = reinterpret_cast<std::uintptr_t>(place) - lastUnexpected_;
    lastUnexpected_ = reinterpret_cast<std::uintptr_t>(place);
    unexpectedInRow_ = distance < farApart ? unexpectedInRow_ + 1 : 0;
    if (unexpectedInRow_ < maxInRow) {
      return true;
    }
    successors_ = {};
    unexpectedInRow_ = 0;
    pause_ = longPause;
    return false;
  }

  /// A distance in bytes. Most members are shorter, and a record is longer.
  static constexpr std::uintptr_t farApart = 256;
  /// Enough for a few records with new members, and a few more in another order.
  static constexpr int maxInRow = 8 * static_cast<int>(fieldCount<Record>);
  static constexpr int longPause = 16 * maxInRow;

  /// More unknown keys than a record is likely to have.
  static constexpr std::size_t unknownCount = 8;
  static constexpr std::size_t indexCount = firstUnknown + unknownCount;

  static constexpr KeyTable<fieldCount<Record>> keyTable{fieldKeys<Record>};

  static constexpr std::uint64_t maxByChance = 4;

  std::array<Successors, indexCount> successors_ = {};
  std::array<SecondaryCount, indexCount> secondaryCounts_ = {};
  std::uint64_t recordCount_ = 0;
  std::uintptr_t lastUnexpected_ = 0;
  int unexpectedInRow_ = 0;
  int pause_ = 0;
};

}  // namespace velmora::internal
