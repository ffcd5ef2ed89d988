// What the fuzz targets of JSON documents share: the verdict on a document, and the same document
// in other words, on which it must be the same.
#pragma once

#include "fuzz/Property.h"
#include "json/DecodingError.h"
#include "json/strict/JSONReader.h"
#include "platform/PlatformError.h"
#include "tests/support/JSONRewriting.h"

#include <concepts>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velmora {

/// A fault, but for its place in the bytes.
struct DocumentFault {
  /// None for the error of a file that holds something else than it has to.
  std::optional<DecodingErrorKind> kind;
  std::vector<CodingKey> codingPath;
  std::string description;

  bool operator==(const DocumentFault&) const = default;
};

template <class Value>
struct Verdict {
  std::variant<Value, DocumentFault> outcome;
  /// Of a fault.
  std::optional<std::size_t> byteOffset;

  [[nodiscard]] const Value* value() const { return std::get_if<Value>(&outcome); }
  [[nodiscard]] const DocumentFault* fault() const { return std::get_if<DocumentFault>(&outcome); }

  bool operator==(const Verdict&) const = default;
};

/// What `decode` makes of a copy of the document. Nothing but DecodingError and PlatformError may
/// leave it.
template <std::invocable<std::string&> Decode>
auto verdictOn(std::string_view document, Decode decode)
    -> Verdict<std::invoke_result_t<Decode, std::string&>> {
  std::string bytes(document);
  try {
    return {decode(bytes), std::nullopt};
  } catch (const DecodingError& error) {
    require(!error.byteOffset().has_value() || *error.byteOffset() <= document.size());
    return {
        DocumentFault{
            .kind = error.kind(), .codingPath = error.codingPath(), .description = error.what()},
        error.byteOffset()};
  } catch (const PlatformError& error) {
    return {DocumentFault{.kind = std::nullopt, .codingPath = {}, .description = error.what()},
            std::nullopt};
  }
}

/// What is wrong with the document as JSON, or else the same document in other words: with the
/// members of all objects in another order, compactly and with blanks and escapes.
inline Verdict<std::vector<std::string>> inOtherWords(std::string_view document) {
  return verdictOn(document, [document](std::string& bytes) {
    const std::uint64_t seed = std::hash<std::string_view>()(document);
    internal::JSONReader reader;
    const internal::JSONValue value = reader.read(bytes);
    return std::vector{rewritten(value),
                       rewritten(value, {.isSpacious = false,
                                         .slashes = internal::SlashStyle::plain,
                                         .shuffleSeed = seed}),
                       rewritten(value, {.isSpacious = true,
                                         .slashes = internal::SlashStyle::escaped,
                                         .shuffleSeed = ~seed})};
  });
}

/// Requires that a fault in the document as JSON is the verdict, whatever else is wrong, and that
/// other words make no difference but for where a fault shows. `decode` is asked about them.
template <class Value, std::invocable<std::string&> Decode>
void requireSameInOtherWords(std::string_view document, const Verdict<Value>& verdict,
                             Decode decode) {
  const Verdict<std::vector<std::string>> others = inOtherWords(document);
  if (const DocumentFault* const fault = others.fault()) {
    require(fault->kind == DecodingErrorKind::dataCorrupted && fault->codingPath.empty());
    require(verdict.fault() != nullptr && *verdict.fault() == *fault);
    require(verdict.byteOffset == others.byteOffset);
    return;
  }
  for (const std::string& other : *others.value()) {
    require(verdictOn(other, decode).outcome == verdict.outcome);
  }
}

/// Requires that a value is written so that it reads back as itself, to the byte.
template <class Value, std::invocable<const Value&> Encode, std::invocable<std::string&> Decode>
void requireToReadBack(const Verdict<Value>& verdict, Encode encode, Decode decode) {
  if (verdict.value() == nullptr) {
    return;
  }
  const std::string written = encode(*verdict.value());
  const Verdict<Value> again = verdictOn(written, decode);
  require(again == verdict);
  require(encode(*again.value()) == written);
}

}  // namespace velmora
