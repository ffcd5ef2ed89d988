// Lists of paths without repetitions.
#pragma once

#include "text/Text.h"

#include <vector>

namespace velmora::internal {

/// `paths` without repetitions, in their order; of equal ones the first is kept.
[[nodiscard]] std::vector<Text> uniquePaths(const std::vector<Text>& paths);

}  // namespace velmora::internal
