#include "tests/support/FailingAllocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

/// The number of further allocations that succeed. A negative number means all.
std::atomic<long> allocationsUntilFailure = -1;
std::atomic<bool> failsFromThenOn = false;
std::atomic<bool> hasFailed = false;
std::atomic<long> count = 0;

bool fails() {
  long successes = allocationsUntilFailure;
  long rest = 0;
  do {
    if (successes < 0) {
      return false;
    }
    rest = successes == 0 && failsFromThenOn ? 0 : successes - 1;
  } while (!allocationsUntilFailure.compare_exchange_weak(successes, rest));
  if (successes > 0) {
    return false;
  }
  hasFailed = true;
  return true;
}

}  // namespace

void* operator new(std::size_t size) {
  ++count;
  void* memory = fails() ? nullptr : std::malloc(size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

// Replaced explicitly, because a sanitizer's array forms do not call the operators above.
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace velmora {

void failAllocations(long successfulAllocations, MemoryShortage shortage) {
  hasFailed = false;
  failsFromThenOn = shortage == MemoryShortage::forGood;
  allocationsUntilFailure = successfulAllocations;
}

long allocationCount() { return count; }

bool letAllocationsSucceed() {
  allocationsUntilFailure = -1;
  return hasFailed.exchange(false);
}

}  // namespace velmora
