// Paths in the form in which items and warped folders are compared.
#pragma once

#include "text/Text.h"

#include <vector>

namespace velmora {

class PathStandardizer;

/// A path that has been standardised. A type of its own, so that nobody standardises it again.
struct StandardizedPath {
  Text text;

  bool operator==(const StandardizedPath&) const = default;
};

[[nodiscard]] StandardizedPath standardized(const Text& path, const PathStandardizer& standardizer);

/// The path and its ancestors, from the nearest to "/". None if the path is not absolute. A
/// separator is a whole character: a "/" with a combining mark separates nothing.
[[nodiscard]] std::vector<Text> pathAndAncestors(const StandardizedPath& path);

}  // namespace velmora
