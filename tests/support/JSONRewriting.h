// The same document in other words: for tests and fuzz targets, to which its layout and the order
// of its keys must make no difference.
#pragma once

#include "json/JSONWriting.h"
#include "json/strict/JSONValue.h"

#include <cstdint>
#include <optional>
#include <string>

namespace velmora {

struct JSONRewriting {
  /// Blanks and line breaks wherever they may stand.
  bool isSpacious = false;
  internal::SlashStyle slashes = internal::SlashStyle::plain;
  /// Shuffles the members of every object when given. Members of one key keep their order, as the
  /// first of them counts.
  std::optional<std::uint64_t> shuffleSeed;
};

/// Numbers stay as they are written.
[[nodiscard]] std::string rewritten(internal::JSONValue value, const JSONRewriting& rewriting = {});

}  // namespace velmora
