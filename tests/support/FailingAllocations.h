// Counts allocations, and lets memory run out at a chosen one. A test program with
// FailingAllocations.cpp among its sources has its operator new replaced, so it should hold nothing
// else.
#pragma once

#include <cstddef>

namespace velmora {

enum class MemoryShortage { once, forGood };

/// The first allocation after `successfulAllocations` of them, on whatever thread, throws
/// std::bad_alloc; those behind it too when the shortage is for good.
void failAllocations(long successfulAllocations, MemoryShortage shortage);

/// How many there were since the start of the program.
long allocationCount();

/// Back to normal. Returns whether an allocation has failed since failAllocations.
bool letAllocationsSucceed();

/// How many allocations `operation` makes.
template <class Operation>
std::size_t allocationsOf(Operation operation) {
  const long before = allocationCount();
  operation();
  return static_cast<std::size_t>(allocationCount() - before);
}

}  // namespace velmora
