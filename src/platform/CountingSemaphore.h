// A counting semaphore for the threads of one process.
#pragma once

namespace velmora {

/// Calls may come from any thread. Each caller must share ownership of the semaphore until its call
/// has returned: a thread that signal() releases may drop its own share earlier.
class CountingSemaphore {
 public:
  virtual ~CountingSemaphore() = default;

  /// Gives one unit back, and releases one waiting thread.
  virtual void signal() noexcept = 0;

  /// Takes one unit; waits while there is none.
  virtual void wait() = 0;
};

}  // namespace velmora
