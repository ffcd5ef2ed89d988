// Proof that threads are at work at the same time.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace velmora {

/// Takes place when so many threads attend at once.
class Meeting {
 public:
  explicit Meeting(std::size_t expected) : expected_(expected) {}

  /// Waits for the others. They come, or the test fails: only then the limit is reached, once, so
  /// that nothing waits for ever.
  void attend() {
    std::unique_lock lock(mutex_);
    ++attending_;
    didChange_.notify_all();
    isOff_ = isOff_ || !didChange_.wait_for(lock, std::chrono::seconds(30),
                                            [&] { return isOff_ || attending_ >= expected_; });
  }

  [[nodiscard]] bool tookPlace() {
    const std::lock_guard guard(mutex_);
    return attending_ >= expected_ && !isOff_;
  }

 private:
  const std::size_t expected_;
  std::mutex mutex_;
  std::condition_variable didChange_;
  std::size_t attending_ = 0;
  bool isOff_ = false;
};

}  // namespace velmora
