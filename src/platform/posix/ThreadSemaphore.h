// A counting semaphore of the standard library.
#pragma once

#include "platform/CountingSemaphore.h"

#include <cstddef>
#include <semaphore>

namespace velmora {

/// See CountingSemaphore for the contract.
class ThreadSemaphore final : public CountingSemaphore {
 public:
  /// `units` is the initial number of units.
  explicit ThreadSemaphore(std::ptrdiff_t units) : semaphore_(units) {}

  void signal() noexcept override { semaphore_.release(); }
  void wait() override { semaphore_.acquire(); }

 private:
  std::counting_semaphore<> semaphore_;
};

}  // namespace velmora
