// Brings paths into the standardised form in which they are compared.
//
// The platform decides, because it may know that two different texts name the same place.
#pragma once

#include "text/Text.h"

#include <vector>

namespace velmora {

/// Both standardisations agree on absolute paths, are idempotent, and never fail. Calls may come
/// from any thread.
class PathStandardizer {
 public:
  virtual ~PathStandardizer() = default;

  /// The path of the standardised file URL made from `path`. A relative or empty path is resolved
  /// against the working directory. Empty when there is no such path.
  virtual Text standardizedFileURLPath(const Text& path) const = 0;

  /// The standardised path. A leading "~" or "~user" is expanded if that home directory is known. A
  /// relative path stays relative.
  virtual Text standardizedPath(const Text& path) const = 0;

  /// The absolute paths on disk that may have `path` as their standardised path, apart from other
  /// spellings of its characters. `path` itself comes first. Some of them may not exist.
  virtual std::vector<Text> pathsStandardizedTo(const Text& path) const = 0;
};

}  // namespace velmora
