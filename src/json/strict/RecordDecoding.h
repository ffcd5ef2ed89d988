// Reads records from JSON objects. Fields are read in the order of their declaration, wherever
// their keys are in the document, so that the first fault in that order is reported.
#pragma once

#include "json/KeyTable.h"
#include "json/RecordFields.h"
#include "json/strict/ValueDecoding.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

namespace velmora::internal {

/// Throws keyNotFound at `key`.
[[noreturn]] void refuseMissingKey(JSONValue object, std::string_view key);

/// Throws dataCorrupted at `key`: its value is not allowed, or is missing in an object.
[[noreturn]] void refuseMember(JSONValue valueOrObject, std::string_view key,
                               const char* description);

/// Reads one object into a record, step by step, so that the caller can check between the steps. Of
/// duplicate keys the first counts. Unknown keys are ignored.
template <RecordWithFields Record>
class RecordReader {
 public:
  /// `record` outlives the reader.
  RecordReader(JSONValue object, Record& record) : object_(object), record_(record) {
    requireType(object, JSONType::object);
    for (JSONMembers members(object); !members.atEnd(); members.advance()) {
      const std::size_t index = keyTable.find(members.key());
      if (index != keyTable.none && tokens_[index] == nullptr) {
        tokens_[index] = members.value().token();
      }
    }
  }

  /// Reads the fields that have not been read so far, in their order, up to the field `last`.
  template <KeyLiteral last>
  void readThrough() {
    readUntil<fieldIndex<Record, last> + 1>(fieldCount<Record>);
  }

  /// The same, up to the field with the index `last`.
  void readThrough(std::size_t last) { readUntil<fieldCount<Record>>(last + 1); }

  void readAll() { readUntil<fieldCount<Record>>(fieldCount<Record>); }

  /// Calls `decodeValue` with the value of the field `key`. The field must be required, and the
  /// next one in the declared order.
  template <KeyLiteral key, std::invocable<JSONValue> DecodeValue>
  void readBy(DecodeValue decodeValue) {
    assert(next_ == (fieldIndex<Record, key>));
    ++next_;
    readRequired(fieldIndex<Record, key>, decodeValue);
  }

  /// Refuses the record (dataCorrupted) for the value of the field with this index, or its absence.
  [[noreturn]] void refuse(std::size_t field, const char* description) const {
    refuseMember(tokens_[field] == nullptr ? object_ : value(field), fieldKeys<Record>[field],
                 description);
  }

 private:
  static constexpr KeyTable keyTable{fieldKeys<Record>};

  [[nodiscard]] JSONValue value(std::size_t index) const {
    return {object_.document(), tokens_[index]};
  }

  /// Reads the fields from the next one to before `end`, of which only those before `limit` are
  /// compiled. So a field without a `decode` is no error where the caller reads it by readBy().
  template <std::size_t limit>
  void readUntil(std::size_t end) {
    end = std::min(end, limit);
    const std::size_t begin = std::exchange(next_, std::max(next_, end));
    [&]<std::size_t... indexes>(std::index_sequence<indexes...>) {
      ((begin <= indexes && indexes < end ? readField<indexes>() : void()), ...);
    }
    (std::make_index_sequence<limit>());
  }

  template <std::size_t index>
  void readField() {
    constexpr auto member = std::get<index>(RecordFields<Record>::list).member;
    auto& field = record_.*member;
    if constexpr (isOptional<std::remove_reference_t<decltype(field)>>) {
      if (tokens_[index] == nullptr) {
        field.reset();
        return;
      }
    }
    readRequired(index, [&field](JSONValue value) { decode(value, field); });
  }

  template <class DecodeValue>
  void readRequired(std::size_t index, DecodeValue decodeValue) const {
    if (tokens_[index] == nullptr) {
      refuseMissingKey(object_, fieldKeys<Record>[index]);
    }
    try {
      decodeValue(value(index));
    } catch (DecodingError& error) {
      error.prependToCodingPath(std::string(fieldKeys<Record>[index]));
      throw;
    }
  }

  JSONValue object_;
  Record& record_;
  /// The first token of each field's value; none where the key is missing.
  std::array<const std::uint32_t*, fieldCount<Record>> tokens_ = {};
  /// The index of the first field that has not been read.
  std::size_t next_ = 0;
};

/// Reads a record that has no checks of its own.
template <RecordWithFields Record>
void decode(JSONValue value, Record& record) {
  RecordReader(value, record).readAll();
}

}  // namespace velmora::internal
