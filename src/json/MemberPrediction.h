// Members of records as programs write them: the same ones in the same order and form each time.
#pragma once

#include "json/KeyTable.h"
#include "json/QuickTokens.h"
#include "json/RecordFields.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace velmora {

/// Expects what followed the value of a field the last time: byte for byte the same comma, blanks,
/// key and colon.
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
    const Follower& expected = followers_[previous];
    return tokens.take(expected.start) ? expected.field : takeOther(tokens, previous);
  }

 private:
  struct alignas(128) Follower {
    MemberStart start;
    std::size_t field = 0;
  };

  std::size_t takeOther(QuickTokens& tokens, std::size_t previous) {
    const bool isFirst = previous == end;
    if (!isFirst && tokens.isNext('}')) {
      return end;
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
    const std::string_view text(begin, static_cast<std::size_t>(tokens.position() - begin));
    followers_[previous] = {.start = MemberStart(text), .field = field};
    return field;
  }

  static constexpr KeyTable<fieldCount<Record>> keyTable{fieldKeys<Record>};

  std::array<Follower, fieldCount<Record> + 1> followers_ = {};
};

}  // namespace velmora
