// Reads records in one pass over the tokens, and accepts or refuses them, as JSONReader and
// RecordReader do together; it does not say why it refuses one. Passes over the values of unknown
// keys, and over all values of a key but the first.
#pragma once

#include "json/RecordFields.h"
#include "json/streaming/MemberPredictor.h"
#include "json/streaming/TokenCursor.h"
#include "json/streaming/ValueSkipper.h"

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace velmora::internal {

/// The set of the fields of a record that are present.
template <RecordWithFields Record>
class PresentFields {
 public:
  void add(std::size_t index) {
    fields_ |= std::uint64_t{1} << index;
    ++additionCount_;
  }

  [[nodiscard]] bool has(std::size_t index) const { return (fields_ >> index & 1) != 0; }

  /// Makes the other fields absent. False if one of them is required, or if a field was added
  /// twice.
  [[nodiscard]] bool finish(Record& record) const {
    return std::cmp_equal(std::popcount(fields_), additionCount_) &&
           resetAbsent(record, std::make_index_sequence<fieldCount<Record>>());
  }

 private:
  static_assert(fieldCount<Record> < 64);

  template <std::size_t... indexes>
  bool resetAbsent(Record& record, std::index_sequence<indexes...>) const {
    if ((~fields_ & required) != 0) {
      return false;
    }
    (resetIfAbsent<indexes>(record), ...);
    return true;
  }

  template <std::size_t index>
  void resetIfAbsent(Record& record) const {
    if constexpr ((required >> index & 1) == 0) {
      if ((fields_ >> index & 1) == 0) {
        (record.*std::get<index>(RecordFields<Record>::list).member).reset();
      }
    }
  }

  static constexpr std::uint64_t required = std::apply(
      [](const auto&... fields) {
        std::uint64_t set = 0;
        std::uint64_t field = 1;
        ((set |= isOptional<std::remove_cvref_t<decltype(std::declval<Record>().*fields.member)>>
                     ? 0
                     : field,
          field <<= 1U),
         ...);
        return set;
      },
      RecordFields<Record>::list);

  std::uint64_t fields_ = 0;
  std::uint64_t additionCount_ = 0;
};

/// Reads records of these types, lists and optionals of them, and the values that a TokenCursor
/// takes. Other headers add types by a `quickTake(TokenCursor&, Value&)` in this namespace. Learns
/// the order of keys. Each function returns false when it refuses the text, and when the text ends
/// before the value.
template <RecordWithFields... Records>
class StreamingRecordReader {
 public:
  /// To be called before each value that is not part of another one. `outerDepth` is the number of
  /// arrays and objects around it.
  void setDepth(std::size_t outerDepth) { depth_ = outerDepth; }

  template <class Value>
  bool read(TokenCursor& tokens, Value& value) {
    if constexpr ((std::same_as<Value, Records> || ...)) {
      return readRecord(tokens, value);
    } else if constexpr (requires { quickTake(tokens, value); }) {
      return quickTake(tokens, value);
    } else if constexpr (requires { tokens.take(value); }) {
      return tokens.take(value);
    } else {
      // The caller reads such fields itself.
      return false;
    }
  }

  template <class Value>
  bool read(TokenCursor& tokens, std::optional<Value>& value) {
    if (tokens.isNext('n')) {
      value.reset();
      return tokens.takeNull();
    }
    return read(tokens, value.emplace());
  }

  template <class Element>
  bool read(TokenCursor& tokens, std::vector<Element>& elements) {
    elements.clear();
    if (!tokens.take('[')) {
      return false;
    }
    if (tokens.take(']')) {
      return true;
    }
    ++depth_;
    do {
      if (!read(tokens, elements.emplace_back())) {
        return false;
      }
    } while (tokens.take(','));
    --depth_;
    return tokens.take(']');
  }

  /// As MemberPredictor::take, for a caller that reads the members of a record one by one.
  template <RecordWithFields Record>
  std::size_t takeMemberStart(TokenCursor& tokens, std::size_t previous) {
    return std::get<MemberPredictor<Record>>(predictions_).take(tokens, previous);
  }

  /// Reads the value of the field `index` alone; there may be no such field.
  template <RecordWithFields Record>
  bool readField(TokenCursor& tokens, Record& record, std::size_t index) {
    return readFieldOf(tokens, record, index, std::make_index_sequence<fieldCount<Record>>());
  }

  /// Passes over a value. Not inlined into readRecord.
  [[gnu::noinline]] bool skipValue(TokenCursor& tokens) {
    const std::size_t remaining = tokens.remaining();
    skipper_.begin(depth_);
    const ValueSkipper::Progress progress = skipper_.skip(tokens);
    if (progress == ValueSkipper::Progress::atEndOfChunk) {
      cutValueLength_ = remaining;
    }
    return progress == ValueSkipper::Progress::complete;
  }

  /// If the last read failed because the text ended in a value that was passed over: the length of
  /// the text from the beginning of that value. skipper() can pass over the rest of it.
  [[nodiscard]] std::optional<std::size_t> takeCutValueLength() {
    return std::exchange(cutValueLength_, std::nullopt);
  }
  [[nodiscard]] ValueSkipper& skipper() { return skipper_; }

 private:
  /// Reads a record as if no key came twice, and again if that fails. Inlines its callees, because
  /// a call for each member costs too much.
  template <RecordWithFields Record>
  [[gnu::flatten, gnu::noinline]] bool readRecord(TokenCursor& tokens, Record& record) {
    auto& members = std::get<MemberPredictor<Record>>(predictions_);
    const TokenCursor::Position begin = tokens.save();
    const std::size_t depth = ++depth_;
    PresentFields<Record> present;
    std::size_t field = members.take(tokens, members.end);
    while (true) {
      while (readField(tokens, record, field)) {
        present.add(field);
        field = members.take(tokens, field);
      }
      if (!members.isUnknown(field) || !skipValue(tokens)) {
        break;
      }
      field = members.take(tokens, field);
    }
    const bool isAtBrace = field == members.end && tokens.take('}');
    if (isAtBrace && present.finish(record)) {
      --depth_;
      return true;
    }
    if (!isAtBrace && tokens.atEnd()) {
      return false;
    }
    tokens.restore(begin);
    depth_ = depth;
    return readFirstOfEach(tokens, record);
  }

  /// Reads a record of which a key may come twice: passes over all its values but the first.
  template <RecordWithFields Record>
  [[gnu::noinline]] bool readFirstOfEach(TokenCursor& tokens, Record& record) {
    auto& members = std::get<MemberPredictor<Record>>(predictions_);
    PresentFields<Record> present;
    std::size_t field = members.take(tokens, members.end);
    while (field != members.end && field != members.none) {
      if (members.isUnknown(field) || present.has(field)) {
        if (!skipValue(tokens)) {
          return false;
        }
      } else if (readField(tokens, record, field)) {
        present.add(field);
      } else {
        return false;
      }
      field = members.take(tokens, field);
    }
    --depth_;
    return field == members.end && tokens.take('}') && present.finish(record);
  }

  template <class Record, std::size_t... indexes>
  bool readFieldOf(TokenCursor& tokens, Record& record, std::size_t field,
                   std::index_sequence<indexes...>) {
    bool isRead = false;
    static_cast<void>(
        ((field == indexes &&
          (isRead = read(tokens, record.*std::get<indexes>(RecordFields<Record>::list).member),
           true)) ||
         ...));
    return isRead;
  }

  std::tuple<MemberPredictor<Records>...> predictions_;
  /// The number of arrays and objects around the value that is read.
  std::size_t depth_ = 0;
  ValueSkipper skipper_;
  std::optional<std::size_t> cutValueLength_;
};

}  // namespace velmora::internal
