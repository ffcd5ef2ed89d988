// The number of random worlds that a test tries.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>

namespace velmora {

/// The number in VELMORA_RANDOM_TREES of the environment, or else `fewest`.
inline std::uint32_t randomTreeCount(std::uint32_t fewest) {
  const char* const count = std::getenv("VELMORA_RANDOM_TREES");
  return count != nullptr ? static_cast<std::uint32_t>(std::stoul(count)) : fewest;
}

}  // namespace velmora
