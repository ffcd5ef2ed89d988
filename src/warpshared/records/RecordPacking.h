// Packs records into few bytes, so that many can be kept. The declaration of the fields
// (RecordFields.h) drives it, so that a new field needs no change here.
//
// A packed record begins with an integer of flags: one for each boolean, and one for each value
// that may be absent. The other values follow in the order of their declaration. A number is
// copied. A text or a list follows its length. An absent value takes no bytes. Nothing is aligned.
// Only the process that packed a record unpacks it.
#pragma once

#include "json/RecordFields.h"
#include "text/Text.h"
#include "warpshared/records/Enumerations.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

namespace velmora::internal {

/// Counts bytes instead of writing them. The count is an upper limit, which is quicker to compute
/// than the exact number.
class ByteLimit {
 public:
  void append(const void*, std::size_t count) { count_ += count; }

  [[nodiscard]] std::size_t count() const { return count_; }

 private:
  std::size_t count_ = 0;
};

/// Writes to memory that is large enough.
class ByteWriter {
 public:
  explicit ByteWriter(char* place) : place_(place) {}

  void append(const void* bytes, std::size_t count) {
    std::memcpy(place_, bytes, count);
    place_ += count;
  }

  [[nodiscard]] char* place() const { return place_; }

 private:
  char* place_;
};

/// Reads the bytes of a ByteWriter.
class ByteReader {
 public:
  explicit ByteReader(const char* place) : place_(place) {}

  void read(void* value, std::size_t count) { std::memcpy(value, take(count), count); }

  /// The next `count` bytes, which are not copied.
  const char* take(std::size_t count) {
    const char* const taken = place_;
    place_ += count;
    return taken;
  }

 private:
  const char* place_;
};

// `pack` appends a value to a ByteLimit or a ByteWriter. It takes and returns that by value, so
// that compilers keep it in a register. `unpack` reads a value from a ByteReader. Unpacked texts
// refer to the packed bytes.

/// A number that fits into a byte. As a length, `longLength` says that a longer number follows.
using PackedByte = std::uint8_t;
inline constexpr PackedByte longLength = 0xFF;

template <class Value>
concept PackedAsItIs = std::integral<Value> && !std::same_as<Value, bool>;

template <class Bytes, PackedAsItIs Integer>
Bytes pack(Bytes bytes, Integer integer) {
  bytes.append(&integer, sizeof integer);
  return bytes;
}

template <PackedAsItIs Integer>
void unpack(ByteReader& bytes, Integer& integer) {
  bytes.read(&integer, sizeof integer);
}

template <class Bytes, EnumerationWithRawValues Enumeration>
Bytes pack(Bytes bytes, Enumeration enumeration) {
  static_assert(EnumNames<Enumeration>::list.size() <= 256);
  return pack(bytes, static_cast<PackedByte>(enumeration));
}

template <EnumerationWithRawValues Enumeration>
void unpack(ByteReader& bytes, Enumeration& enumeration) {
  PackedByte number = 0;
  unpack(bytes, number);
  enumeration = static_cast<Enumeration>(number);
}

template <class Bytes>
Bytes packLength(Bytes bytes, std::size_t length) {
  if (length < longLength) {
    return pack(bytes, static_cast<PackedByte>(length));
  }
  return pack(pack(bytes, longLength), length);
}

/// Counts a long length, whatever the length is.
inline ByteLimit packLength(ByteLimit bytes, std::size_t length) {
  return pack(pack(bytes, longLength), length);
}

inline std::size_t unpackLength(ByteReader& bytes) {
  PackedByte shortLength = 0;
  unpack(bytes, shortLength);
  std::size_t length = shortLength;
  if (shortLength == longLength) {
    unpack(bytes, length);
  }
  return length;
}

template <class Bytes>
Bytes pack(Bytes bytes, TextView text) {
  bytes = packLength(bytes, text.view().size());
  // The view of an empty text may be null.
  if (!text.empty()) {
    bytes.append(text.view().data(), text.view().size());
  }
  return bytes;
}

inline void unpack(ByteReader& bytes, TextView& text) {
  const std::size_t length = unpackLength(bytes);
  text = std::string_view(bytes.take(length), length);
}

template <class Bytes, class Element>
Bytes pack(Bytes bytes, const std::vector<Element>& elements) {
  bytes = packLength(bytes, elements.size());
  for (const Element& element : elements) {
    bytes = pack(bytes, element);
  }
  return bytes;
}

/// Replaces the elements, and reuses their memory.
template <class Element>
void unpack(ByteReader& bytes, std::vector<Element>& elements) {
  elements.resize(unpackLength(bytes));
  for (Element& element : elements) {
    unpack(bytes, element);
  }
}

/// A boolean is its flag, and takes no bytes.
template <class Bytes>
Bytes pack(Bytes bytes, bool) {
  return bytes;
}

inline void unpack(ByteReader&, bool flag, bool& value) { value = flag; }

/// An absent value is its flag, and takes no bytes.
template <class Bytes, class Value>
Bytes pack(Bytes bytes, const std::optional<Value>& value) {
  return value.has_value() ? pack(bytes, *value) : bytes;
}

/// Counts the bytes of the integer even if it is absent, because an upper limit needs no branch.
template <PackedAsItIs Integer>
ByteLimit pack(ByteLimit bytes, const std::optional<Integer>&) {
  return pack(bytes, Integer{});
}

template <class Value>
void unpack(ByteReader& bytes, bool isPresent, std::optional<Value>& value) {
  if (isPresent) {
    unpack(bytes, value.emplace());
  } else {
    value.reset();
  }
}

template <class Value>
inline constexpr bool hasFlag = std::same_as<Value, bool>;
template <class Value>
inline constexpr bool hasFlag<std::optional<Value>> = true;

template <RecordWithFields Record>
inline constexpr std::size_t flagCount = std::apply(
    []<class... Values>(const RecordField<Record, Values>&...) {
      return (std::size_t{0} + ... + std::size_t{hasFlag<Values>});
    },
    RecordFields<Record>::list);

template <RecordWithFields Record>
using PackedFlags =
    std::conditional_t<flagCount<Record> <= 8, std::uint8_t,
                       std::conditional_t<flagCount<Record> <= 32, std::uint32_t, std::uint64_t>>;

template <class Bytes, RecordWithFields Record>
Bytes pack(Bytes bytes, const Record& record) {
  static_assert(flagCount<Record> <= 64);
  std::uint64_t flags = 0;
  unsigned position = 0;
  const Bytes begin = bytes;
  bytes = pack(bytes, PackedFlags<Record>{});
  const auto packValue = [&]<class Value>(const Value& value) {
    if constexpr (hasFlag<Value>) {
      if (static_cast<bool>(value)) {
        flags |= std::uint64_t{1} << position;
      }
      ++position;
    }
    bytes = pack(bytes, value);
  };
  std::apply([&](const auto&... fields) { (packValue(record.*fields.member), ...); },
             RecordFields<Record>::list);
  // Into the space that was left for the flags.
  pack(begin, static_cast<PackedFlags<Record>>(flags));
  return bytes;
}

template <RecordWithFields Record>
void unpack(ByteReader& bytes, Record& record) {
  PackedFlags<Record> flags = 0;
  unpack(bytes, flags);
  unsigned position = 0;
  const auto unpackValue = [&]<class Value>(Value& value) {
    if constexpr (hasFlag<Value>) {
      unpack(bytes, (flags >> position++ & 1U) != 0, value);
    } else {
      unpack(bytes, value);
    }
  };
  std::apply([&](const auto&... fields) { (unpackValue(record.*fields.member), ...); },
             RecordFields<Record>::list);
}

}  // namespace velmora::internal
