// The values of a document that a JSONReader has read.
#pragma once

#include "json/TokenFinder.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace velmora::internal {

enum class JSONType { null, boolean, number, string, array, object };

/// "null", "a boolean" and so on, for descriptions.
[[nodiscard]] std::string_view describe(JSONType type);

/// The offset of an array or object in its document, and the number of its tokens.
struct JSONContainer {
  std::uint32_t byteOffset;
  std::uint32_t tokenCount;
};

/// A document that was read. Its tokens are the brackets, colons, commas and scalars, in order. A
/// token is a number: its offset in `bytes`; for an opening bracket, `containerFlag` and its index
/// in `containers`.
struct JSONDocument {
  /// JSONReader fills with it the bytes that a string no longer needs once its escapes are
  /// resolved. No UTF-8 has it.
  static constexpr char fillerByte = '\xFF';

  static constexpr std::uint32_t containerFlag = std::uint32_t{1} << 31;

  const char* bytes;
  const JSONContainer* containers;
};

/// One value: a view of its document, cheap to copy.
class JSONValue {
 public:
  JSONValue(const JSONDocument& document, const std::uint32_t* token)
      : document_(document), token_(token) {}

  [[nodiscard]] JSONType type() const {
    return typesByFirstByte[static_cast<unsigned char>(firstByte())];
  }

  /// The value of a boolean.
  [[nodiscard]] bool boolean() const { return firstByte() == 't'; }

  /// The characters of a number, unchanged.
  [[nodiscard]] std::string_view number() const {
    return {document_.bytes + *token_, endOfScalar() - *token_};
  }

  /// The text of a string without escapes. It may have any character, NUL included.
  [[nodiscard]] std::string_view text() const {
    const std::uint32_t begin = *token_ + 1;
    return {document_.bytes + begin, endOfScalar() - 1 - begin};
  }

  /// The offset of the value in the document.
  [[nodiscard]] std::size_t byteOffset() const;

  /// The parts of the value, for a caller that keeps many values of one document.
  [[nodiscard]] const JSONDocument& document() const { return document_; }
  [[nodiscard]] const std::uint32_t* token() const { return token_; }

 private:
  friend class JSONMembers;
  friend class JSONElements;

  static constexpr std::array<JSONType, 256> typesByFirstByte = [] {
    std::array<JSONType, 256> types{};
    types.fill(JSONType::number);
    types['{'] = JSONType::object;
    types['['] = JSONType::array;
    types['"'] = JSONType::string;
    types['t'] = JSONType::boolean;
    types['f'] = JSONType::boolean;
    types['n'] = JSONType::null;
    return types;
  }();

  [[nodiscard]] bool isContainer() const { return (*token_ & JSONDocument::containerFlag) != 0; }

  [[nodiscard]] const JSONContainer& container() const {
    return document_.containers[*token_ & ~JSONDocument::containerFlag];
  }

  [[nodiscard]] char firstByte() const {
    return document_.bytes[isContainer() ? container().byteOffset : *token_];
  }

  /// The token after the value, and after a comma that follows it.
  [[nodiscard]] const std::uint32_t* tokenAfterComma() const {
    const std::uint32_t* const token = token_ + (isContainer() ? container().tokenCount : 1);
    return token + (document_.bytes[*token] == ',' ? 1 : 0);
  }

  [[nodiscard]] std::uint32_t endOfScalar() const {
    return endOfJSONToken(document_.bytes, token_[1]);
  }

  JSONDocument document_;
  const std::uint32_t* token_;
};

/// The members of an object, in the order of the document, with duplicate keys.
class JSONMembers {
 public:
  explicit JSONMembers(JSONValue object) : document_(object.document_), token_(object.token_ + 1) {}

  [[nodiscard]] bool atEnd() const { return document_.bytes[*token_] == '}'; }

  [[nodiscard]] std::string_view key() const { return JSONValue(document_, token_).text(); }
  [[nodiscard]] JSONValue value() const { return {document_, token_ + 2}; }

  /// Takes the same time for a long value as for a short one.
  void advance() { token_ = value().tokenAfterComma(); }

 private:
  JSONDocument document_;
  const std::uint32_t* token_;
};

/// The elements of an array, in order.
class JSONElements {
 public:
  explicit JSONElements(JSONValue array) : document_(array.document_), token_(array.token_ + 1) {}

  [[nodiscard]] bool atEnd() const {
    return !value().isContainer() && document_.bytes[*token_] == ']';
  }

  [[nodiscard]] JSONValue value() const { return {document_, token_}; }

  /// Takes the same time for a long element as for a short one.
  void advance() { token_ = value().tokenAfterComma(); }

 private:
  JSONDocument document_;
  const std::uint32_t* token_;
};

}  // namespace velmora::internal
