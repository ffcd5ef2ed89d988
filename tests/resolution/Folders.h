// The paths of folders, for comparisons in tests.
#pragma once

#include "resolution/WarpRoots.h"

#include <string>
#include <vector>

namespace velmora {

/// The bytes of the paths.
inline std::vector<std::string> bytesOf(const std::vector<StandardizedPath>& paths) {
  std::vector<std::string> bytes;
  for (const StandardizedPath& path : paths) {
    bytes.push_back(path.text.utf8());
  }
  return bytes;
}

}  // namespace velmora
