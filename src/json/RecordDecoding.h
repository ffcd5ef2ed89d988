// Reads records from JSON objects: fields in the order of their declaration, wherever their keys
// stand in the document, so that the first fault in that order is the one reported.
#pragma once

#include "json/KeyTable.h"
#include "json/RecordFields.h"
#include "json/ValueDecoding.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

namespace velmora {

/// What a missing key raises; its coding path is the key.
[[noreturn]] void refuseMissingKey(JSONValue object, std::string_view key);

/// What stands, or should stand, at a key is not one of the values allowed there.
[[noreturn]] void refuseMember(JSONValue valueOrObject, std::string_view key,
                               const char* description);

/// Reads one object into a record, step by step, so that checks can come between. Of duplicate keys
/// the first counts; keys that are not the record's are ignored.
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

  /// Reads the field of `first` and those behind it up to the one of `last`, in their order.
  template <KeyLiteral first, KeyLiteral last = first>
  void read() {
    constexpr std::size_t begin = fieldIndex<Record, first>;
    constexpr std::size_t end = fieldIndex<Record, last> + 1;
    static_assert(begin < end);
    readRange<begin>(std::make_index_sequence<end - begin>());
  }

  /// Has `decodeValue` read the value of a required field.
  template <KeyLiteral key, std::invocable<JSONValue> DecodeValue>
  void readBy(DecodeValue decodeValue) const {
    readRequired(fieldIndex<Record, key>, decodeValue);
  }

  void readAll() { readRange<0>(std::make_index_sequence<fieldCount<Record>>()); }

  /// Refuses the record (dataCorrupted) for what stands, or should stand, at `key`.
  template <KeyLiteral key>
  [[noreturn]] void refuse(const char* description) const {
    constexpr std::size_t index = fieldIndex<Record, key>;
    refuseMember(tokens_[index] == nullptr ? object_ : value(index), key.view(), description);
  }

 private:
  static constexpr KeyTable keyTable{fieldKeys<Record>};

  [[nodiscard]] JSONValue value(std::size_t index) const {
    return {object_.document(), tokens_[index]};
  }

  template <std::size_t begin, std::size_t... offsets>
  void readRange(std::index_sequence<offsets...>) {
    (readField<begin + offsets>(), ...);
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
};

/// A record without checks of its own.
template <RecordWithFields Record>
void decode(JSONValue value, Record& record) {
  RecordReader(value, record).readAll();
}

}  // namespace velmora
