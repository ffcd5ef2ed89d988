// Path standardisation as the rest of the system does it.
#pragma once

#include "platform/PathStandardizer.h"

namespace velmora {

/// Foundation's rules, which the application compares paths by as well: on macOS "/private/tmp/a"
/// and "/tmp/a" are one place, and a link is resolved where ".." follows it. Looks at the file
/// system for both.
class MacPathStandardizer final : public PathStandardizer {
 public:
  Text standardizedFileURLPath(const Text& path) const override;
  Text standardizedPath(const Text& path) const override;
  std::vector<Text> pathsStandardizedTo(const Text& path) const override;
};

}  // namespace velmora
