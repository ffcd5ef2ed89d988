// How many random worlds a test tries.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>

namespace velmora {

/// As many as VELMORA_RANDOM_TREES in the environment says, or else `fewest`.
inline std::uint32_t randomTreeCount(std::uint32_t fewest) {
  const char* const count = std::getenv("VELMORA_RANDOM_TREES");
  return count != nullptr ? static_cast<std::uint32_t>(std::stoul(count)) : fewest;
}

}  // namespace velmora
