// The fault of a document: its kind, its place, and a description.
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

/// One step into a value: the key of a member of an object, or the index of an element of an array.
using CodingKey = std::variant<std::string, std::size_t>;

/// Thrown by decoding, which then leaves no value behind. `what()` is the description, in English,
/// for developers.
class DecodingError : public std::runtime_error {
 public:
  /// `byteOffset` is the offset of the fault in the document, or of the value that has it.
  DecodingError(DecodingErrorKind kind, const std::string& description,
                std::optional<std::size_t> byteOffset)
      : std::runtime_error(description), kind_(kind), byteOffset_(byteOffset) {}

  [[nodiscard]] DecodingErrorKind kind() const { return kind_; }

  /// The steps from the root of the document to the fault. The last one is the key or index at
  /// fault, also when that key is missing. Empty for a fault of the whole document.
  [[nodiscard]] const std::vector<CodingKey>& codingPath() const { return codingPath_; }

  /// None for a fault of the whole document that has no place.
  [[nodiscard]] std::optional<std::size_t> byteOffset() const { return byteOffset_; }

  /// Adds a step before the others, for a reader of a container that passes on an error of a value.
  void prependToCodingPath(CodingKey key);

 private:
  DecodingErrorKind kind_;
  std::vector<CodingKey> codingPath_;
  std::optional<std::size_t> byteOffset_;
};

}  // namespace velmora
