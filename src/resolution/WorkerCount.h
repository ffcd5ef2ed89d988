// How many threads may work side by side, the calling one included.
#pragma once

#include <cstddef>

namespace velmora {

/// Nobody may ask for more.
inline constexpr std::size_t mostWorkers = 64;

/// What is taken where nobody asks for a number: one worker for each processor, up to four, since
/// each keeps memory in proportion to the largest file that it reads. One where the number of
/// processors is not known (0).
[[nodiscard]] std::size_t usualWorkerCount(std::size_t processorCount);

/// The same for the processors of this machine.
[[nodiscard]] std::size_t usualWorkerCount();

}  // namespace velmora
