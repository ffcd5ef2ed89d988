// Counts allocations, and lets memory run out at each allocation of an operation. Linking
// velmora_failing_allocations replaces operator new, so such a program should have no other tests.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <new>

namespace velmora {

enum class MemoryShortage { once, forGood };

/// The allocation after `successfulAllocations` others throws std::bad_alloc, on any thread. With
/// MemoryShortage::forGood, so do all later allocations.
void failAllocations(long successfulAllocations, MemoryShortage shortage);

/// The number of allocations since the start of the program.
long allocationCount();

/// Lets all allocations succeed. Returns whether one has failed since failAllocations.
bool letAllocationsSucceed();

/// The number of allocations that `operation` makes.
template <class Operation>
std::size_t allocationsOf(Operation operation) {
  const long before = allocationCount();
  operation();
  return static_cast<std::size_t>(allocationCount() - before);
}

/// The result of an operation.
struct Attempt {
  MemoryShortage shortage = MemoryShortage::once;
  /// One of its allocations has failed.
  bool hasFailed = false;
  /// It has thrown std::bad_alloc.
  bool hasThrown = false;
};

/// Lets memory run out at each allocation of `operation` in turn, first for one allocation, then
/// also for all later ones. After the first `density` allocations it skips more and more of them.
/// `operation` gets the result of `prepare`. `check` then gets the same object and the attempt.
/// Both `prepare` and `check` run without a shortage. Returns the number of allocations, which is
/// approximate with a `density`.
template <class Prepare, class Operation, class Check>
long failEachAllocation(Prepare prepare, Operation operation, Check check,
                        long density = std::numeric_limits<long>::max()) {
  const auto attempt = [&](long successfulAllocations, MemoryShortage shortage) {
    SCOPED_TRACE(testing::Message() << "memory for " << successfulAllocations << " allocations"
                                    << (shortage == MemoryShortage::once ? ", then again" : ""));
    auto subject = prepare();
    Attempt attempted = {.shortage = shortage};
    failAllocations(successfulAllocations, shortage);
    try {
      operation(subject);
    } catch (const std::bad_alloc&) {
      attempted.hasThrown = true;
    } catch (...) {
      letAllocationsSucceed();
      throw;
    }
    attempted.hasFailed = letAllocationsSucceed();
    EXPECT_TRUE(attempted.hasFailed || !attempted.hasThrown);
    check(subject, attempted);
    return attempted.hasFailed && !testing::Test::HasFailure();
  };
  // simdjson ends the process when its first use runs out of memory, so it is used here first.
  attempt(std::numeric_limits<long>::max(), MemoryShortage::once);
  long number = 0;
  for (const MemoryShortage shortage : {MemoryShortage::once, MemoryShortage::forGood}) {
    for (number = 0; attempt(number, shortage); number += 1 + number / density) {
    }
  }
  return number;
}

}  // namespace velmora
