// Reads records from documents as programs write them, in one pass over the tokens, and gives up at
// anything else: a key that is none of the record's or stands there twice, and whatever is missing,
// misplaced or misspelt. What it accepts, JSONReader and RecordReader
// accept, with equal values. Where it gives up, they have the word: nothing here knows of faults.
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

/// Which fields of a record are there.
template <RecordWithFields Record>
class PresentFields {
 public:
  void add(std::size_t index) {
    fields_ |= std::uint64_t{1} << index;
    ++additionCount_;
  }

  /// Takes the fields that are not there for absent; false where one may not be, or where one was
  /// added twice.
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

/// Reads records of these types, and lists and optionals of them. Other types join in by a
/// `quickTake(TokenCursor&, Value&)` in this namespace. Learns the order of keys as it reads. Each
/// function returns whether it read what it was to read, or gave up.
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
      // Somebody else's to read.
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

  /// Takes what stands before a value of `Record`: its beginning or a comma, a key, a colon.
  /// Returns the field, or fieldCount<Record> when it gives up. `previous` is the field before,
  /// fieldCount<Record> at the beginning.
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
  /// One function with all that it calls: with calls for every member, reading took a fifth longer.
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
