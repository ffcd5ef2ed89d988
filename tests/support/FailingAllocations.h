// Counts allocations, and lets memory run out at each one of an operation. A program that links
// velmora_failing_allocations has its operator new replaced, so it should hold no other tests.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <new>

namespace velmora {

enum class MemoryShortage { once, forGood };

/// The first allocation after `successfulAllocations` of them, on whatever thread, throws
/// std::bad_alloc; so do all later ones when the shortage is for good.
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

/// How an operation got on.
struct Attempt {
  MemoryShortage shortage = MemoryShortage::once;
  /// An allocation of it has failed.
  bool hasFailed = false;
  /// It has thrown std::bad_alloc.
  bool hasThrown = false;
};

/// Lets memory run out at each allocation of `operation` in turn, first for one allocation, then
/// for all that follow. After the first `density` allocations it leaves out ever more of them. The
/// operation gets what `prepare` makes; `check` then gets the same, and the attempt. `prepare` and
/// `check` run without a shortage. Returns how many allocations there are; with a `density`, about
/// how many.
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
  // simdjson ends a process that has no memory when it is used for the first time.
  attempt(std::numeric_limits<long>::max(), MemoryShortage::once);
  long number = 0;
  for (const MemoryShortage shortage : {MemoryShortage::once, MemoryShortage::forGood}) {
    for (number = 0; attempt(number, shortage); number += 1 + number / density) {
    }
  }
  return number;
}

}  // namespace velmora
