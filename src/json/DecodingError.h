// What is wrong with a document: of which kind, where, and in words.
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velmora {

enum class DecodingErrorKind {
  /// A required key is missing.
  keyNotFound,
  /// null stands where a value is required.
  valueNotFound,
  /// A value has another JSON type than the one required.
  typeMismatch,
  /// The document is not JSON, or a value is not one of those allowed.
  dataCorrupted,
};

/// "keyNotFound" and so on.
[[nodiscard]] std::string_view name(DecodingErrorKind kind);

/// One step from a value into it: the key of an object's member, or the index of an array's
/// element.
using CodingKey = std::variant<std::string, std::size_t>;

/// `what()` is the description, in English, for developers. Nothing of a value whose decoding
/// raised an error remains.
class DecodingError : public std::runtime_error {
 public:
  /// `byteOffset` is where in the document the fault shows, or where the value stands that is at
  /// fault or lacks something.
  DecodingError(DecodingErrorKind kind, const std::string& description,
                std::optional<std::size_t> byteOffset)
      : std::runtime_error(description), kind_(kind), byteOffset_(byteOffset) {}

  [[nodiscard]] DecodingErrorKind kind() const { return kind_; }

  /// The way from the document's root to the fault. It ends at the offending key or index, also
  /// when that key is missing; empty for a fault of the document as a whole.
  [[nodiscard]] const std::vector<CodingKey>& codingPath() const { return codingPath_; }

  /// None when the document as a whole is at fault in no particular place.
  [[nodiscard]] std::optional<std::size_t> byteOffset() const { return byteOffset_; }

  /// For a reader of containers that passes on the error of one of its values.
  void prependToCodingPath(CodingKey key);

 private:
  DecodingErrorKind kind_;
  std::vector<CodingKey> codingPath_;
  std::optional<std::size_t> byteOffset_;
};

}  // namespace velmora
