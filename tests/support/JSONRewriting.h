// Rewrites a document with another layout or another order of keys. Tests and fuzz targets require
// that neither makes a difference. Sorted documents are equal if they differ in nothing else.
#pragma once

#include "json/JSONWriting.h"
#include "json/strict/JSONValue.h"

#include <cstdint>
#include <optional>
#include <string>

namespace velmora {

struct JSONRewriting {
  /// Sorts the members of every object by their keys. Members of one key keep their order.
  bool isSorted = false;
  /// Blanks and line breaks at every allowed position.
  bool isSpacious = false;
  internal::SlashStyle slashes = internal::SlashStyle::plain;
  /// With a seed, shuffles the members of every object. Members of one key keep their order,
  /// because the first of them counts.
  std::optional<std::uint64_t> shuffleSeed = std::nullopt;
};

/// Numbers are copied unchanged.
[[nodiscard]] std::string rewritten(internal::JSONValue value, const JSONRewriting& rewriting = {});

}  // namespace velmora
