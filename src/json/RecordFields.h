// The declaration of a record's fields with their keys in JSON, once for all readers and writers.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <tuple>

namespace velmora::internal {

template <class Value>
inline constexpr bool isOptional = false;
template <class Value>
inline constexpr bool isOptional<std::optional<Value>> = true;

/// A field. An empty std::optional is absent in JSON; any other value is required.
template <class Record, class Value>
struct RecordField {
  std::string_view key;
  Value Record::*member;
};

template <class Record, class Value>
RecordField(const char*, Value Record::*) -> RecordField<Record, Value>;

/// Specialised for each record: `list` is the std::tuple of its fields, in the order of reading.
template <class Record>
struct RecordFields;

template <class Record>
concept RecordWithFields = requires {
  RecordFields<Record>::list;
};

template <RecordWithFields Record>
inline constexpr std::size_t fieldCount = std::tuple_size_v<decltype(RecordFields<Record>::list)>;

template <RecordWithFields Record>
inline constexpr auto fieldKeys = std::apply(
    [](const auto&... fields) { return std::array{fields.key...}; }, RecordFields<Record>::list);

/// A key as a template argument.
template <std::size_t size>
struct KeyLiteral {
  /// Not explicit, so that a literal converts to it.
  consteval KeyLiteral(const char (&text)[size]) { std::copy_n(text, size, characters); }

  [[nodiscard]] constexpr std::string_view view() const { return {characters, size - 1}; }

  char characters[size] = {};
};

/// The index of a field by its key, which must be one of the record's.
template <RecordWithFields Record, KeyLiteral key>
inline constexpr std::size_t fieldIndex = [] {
  constexpr auto& keys = fieldKeys<Record>;
  constexpr auto found = std::ranges::find(keys, key.view());
  static_assert(found != keys.end());
  return static_cast<std::size_t>(found - keys.begin());
}();

}  // namespace velmora::internal
