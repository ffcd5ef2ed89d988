// Path standardisation by Foundation, like in the rest of the system.
#pragma once

#include "platform/PathStandardizer.h"

namespace velmora {

/// Uses Foundation's rules, because the application compares paths by them, too. On macOS
/// "/private/tmp/a" and "/tmp/a" are one place, and a symbolic link before ".." is resolved. Both
/// rules access the file system.
class MacPathStandardizer final : public PathStandardizer {
 public:
  Text standardizedFileURLPath(const Text& path) const override;
  Text standardizedPath(const Text& path) const override;
  std::vector<Text> pathsStandardizedTo(const Text& path) const override;
};

}  // namespace velmora
