// Reads records in one pass over the tokens, and accepts or refuses them, as JSONReader and
// RecordReader do together; it does not say why it refuses one. Passes over the values of unknown
// keys, and over all values of a key but the first.
#pragma once

#include "json/RecordFields.h"
#include "json/streaming/MemberPredictor.h"
#include "json/streaming/TokenCursor.h"
#include "json/streaming/ValueSkipper.h"

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
  /// Adds a field. False if it is present already, and for an index that is no field's.
  bool add(std::size_t index) {
    const std::uint64_t field = std::uint64_t{1} << index;
    const bool isNew = (fields_ & field) == 0;
    fields_ |= field;
    return isNew;
  }

  [[nodiscard]] bool has(std::size_t index) const { return (fields_ >> index & 1) != 0; }

  /// Makes the other fields absent. False if one of them is required.
  [[nodiscard]] bool finish(Record& record) const {
    return resetAbsent(record, std::make_index_sequence<fieldCount<Record>>());
  }

 private:
  static_assert(MemberPredictor<Record>::indexCount <= 64);

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

  /// The indexes that are no field's count as present, so that one test finds both kinds of
  /// members that are passed over.
  std::uint64_t fields_ = ~std::uint64_t{0} << fieldCount<Record>;
};

/// Reads records of these types, lists and optionals of them, and the values that a TokenCursor
/// takes. Other headers add types by a `quickTake(TokenCursor&, Value&)` in this namespace. Learns
/// the order of keys. Each function returns false when it refuses the text, and when the text ends
/// before the value. `outerDepth` is the number of arrays and objects around the value.
template <RecordWithFields... Records>
class StreamingRecordReader {
 public:
  template <class Value>
  bool read(TokenCursor& tokens, Value& value, std::size_t outerDepth) {
    if constexpr ((std::same_as<Value, Records> || ...)) {
      return readRecord(tokens, value, outerDepth);
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
  bool read(TokenCursor& tokens, std::optional<Value>& value, std::size_t outerDepth) {
    if (tokens.isNext('n')) {
      value.reset();
      return tokens.takeNull();
    }
    return read(tokens, value.emplace(), outerDepth);
  }

  template <class Element>
  bool read(TokenCursor& tokens, std::vector<Element>& elements, std::size_t outerDepth) {
    elements.clear();
    if (!tokens.take('[')) {
      return false;
    }
    if (tokens.take(']')) {
      return true;
    }
    do {
      if (!read(tokens, elements.emplace_back(), outerDepth + 1)) {
        return false;
      }
    } while (tokens.take(','));
    return tokens.take(']');
  }

  /// As MemberPredictor::take, for a caller that reads the members of a record one by one.
  template <RecordWithFields Record>
  std::size_t takeMemberStart(TokenCursor& tokens, std::size_t previous) {
    return std::get<MemberPredictor<Record>>(predictions_).take(tokens, previous);
  }

  /// Reads the value of the field `index` alone; there may be no such field.
  template <RecordWithFields Record>
  bool readField(TokenCursor& tokens, Record& record, std::size_t index, std::size_t outerDepth) {
    return readFieldOf(tokens, record, index, outerDepth,
                       std::make_index_sequence<fieldCount<Record>>());
  }

  /// Passes over a value. Not inlined into readRecord.
  [[gnu::noinline]] bool skipValue(TokenCursor& tokens, std::size_t outerDepth) {
    const std::size_t remaining = tokens.remaining();
    skipper_.begin(outerDepth);
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
  /// Inlines its callees, because a call for each member costs too much.
  template <RecordWithFields Record>
  [[gnu::flatten, gnu::noinline]] bool readRecord(TokenCursor& tokens, Record& record,
                                                  std::size_t outerDepth) {
    auto& members = std::get<MemberPredictor<Record>>(predictions_);
    PresentFields<Record> present;
    std::size_t field = members.take(tokens, members.end);
    while (true) {
      if (present.add(field)) {
        if (!readField(tokens, record, field, outerDepth + 1)) {
          return false;
        }
      } else if (field == members.end) {
        return tokens.take('}') && present.finish(record);
      } else if (field == members.none || !skipValue(tokens, outerDepth + 1)) {
        return false;
      }
      field = members.take(tokens, field);
    }
  }

  template <class Record, std::size_t... indexes>
  bool readFieldOf(TokenCursor& tokens, Record& record, std::size_t field, std::size_t outerDepth,
                   std::index_sequence<indexes...>) {
    bool isRead = false;
    static_cast<void>(
        ((field == indexes &&
          (isRead = read(tokens, record.*std::get<indexes>(RecordFields<Record>::list).member,
                         outerDepth),
           true)) ||
         ...));
    return isRead;
  }

  std::tuple<MemberPredictor<Records>...> predictions_;
  ValueSkipper skipper_;
  std::optional<std::size_t> cutValueLength_;
};

}  // namespace velmora::internal
