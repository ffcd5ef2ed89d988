// The shared code of the fuzz targets for JSON: the verdict on a document, and the same document in
// other layouts, which must have the same verdict.
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

/// A fault without its offset.
struct DocumentFault {
  /// std::nullopt for the error of a file with the wrong content.
  std::optional<DecodingErrorKind> kind;
  std::vector<CodingKey> codingPath;
  std::string description;

  bool operator==(const DocumentFault&) const = default;
};

template <class Value>
struct Verdict {
  std::variant<Value, DocumentFault> outcome;
  /// The offset of a fault, if it has one.
  std::optional<std::size_t> byteOffset;

  [[nodiscard]] const Value* value() const { return std::get_if<Value>(&outcome); }
  [[nodiscard]] const DocumentFault* fault() const { return std::get_if<DocumentFault>(&outcome); }

  bool operator==(const Verdict&) const = default;
};

/// The result of `decode` for a copy of the document. `decode` may throw only DecodingError and
/// PlatformError.
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

/// The fault of the document as JSON, or else the same document in other layouts: compact, with
/// shuffled members, and with blanks and escapes as well.
inline Verdict<std::vector<std::string>> inOtherLayouts(std::string_view document) {
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

/// Requires that a fault of the document as JSON is the verdict, before any other fault. Otherwise
/// requires that `decode` has the same verdict on the other layouts, except for the offset.
template <class Value, std::invocable<std::string&> Decode>
void requireSameInOtherLayouts(std::string_view document, const Verdict<Value>& verdict,
                               Decode decode) {
  const Verdict<std::vector<std::string>> others = inOtherLayouts(document);
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

/// Requires that a written value reads back as itself, and is written the same again.
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
