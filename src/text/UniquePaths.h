// Lists of paths without repetitions.
#pragma once

#include "text/Text.h"

#include <vector>

namespace velmora::internal {

/// `paths` in their order, without repetitions; the first of equal paths is kept.
[[nodiscard]] std::vector<Text> uniquePaths(const std::vector<Text>& paths);

}  // namespace velmora::internal
