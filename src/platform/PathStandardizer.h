// How the platform brings paths into the one form in which they are compared.
//
// A seam, because a platform may know that two different texts name the same place.
#pragma once

#include "text/Text.h"

#include <vector>

namespace velmora {

/// Both standardisations agree on absolute paths, are idempotent, and never fail. Calls may come
/// from any thread.
class PathStandardizer {
 public:
  virtual ~PathStandardizer() = default;

  /// The path of the standardised file URL made from `path`. A relative or empty path is taken
  /// relative to the working directory. Empty when there is no such path.
  virtual Text standardizedFileURLPath(const Text& path) const = 0;

  /// The standardised path, with a leading "~" or "~user" expanded to the home directory where
  /// there is one. A relative path stays relative.
  virtual Text standardizedPath(const Text& path) const = 0;

  /// Where an absolute path may lie on disk that has `path` as its standardised path, spellings of
  /// its characters aside: `path` itself first. Some may not be there.
  virtual std::vector<Text> pathsStandardizedTo(const Text& path) const = 0;
};

}  // namespace velmora
