// Reads records in one pass over the tokens, and accepts them or gives up. JSONReader and
// RecordReader accept every document that is accepted here, with equal values. It gives up at every
// fault, at an unknown key and at a duplicate one; it does not say why.
#pragma once

#include "json/RecordFields.h"
#include "json/streaming/MemberPredictor.h"
#include "json/streaming/TokenCursor.h"

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
/// the order of keys. Each function returns false when it gives up.
template <RecordWithFields... Records>
class StreamingRecordReader {
 public:
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
    do {
      if (!read(tokens, elements.emplace_back())) {
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
  bool readField(TokenCursor& tokens, Record& record, std::size_t index) {
    return readFieldOf(tokens, record, index, std::make_index_sequence<fieldCount<Record>>());
  }

 private:
  /// Inlines its callees, because a call for each member costs too much.
  template <RecordWithFields Record>
  [[gnu::flatten, gnu::noinline]] bool readRecord(TokenCursor& tokens, Record& record) {
    auto& members = std::get<MemberPredictor<Record>>(predictions_);
    PresentFields<Record> seen;
    std::size_t field = members.take(tokens, members.end);
    while (readField(tokens, record, field)) {
      seen.add(field);
      field = members.take(tokens, field);
    }
    return field == members.end && tokens.take('}') && seen.finish(record);
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
};

}  // namespace velmora::internal
