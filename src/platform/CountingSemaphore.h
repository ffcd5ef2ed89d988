// A number of units that the threads of one process take and give back.
#pragma once

namespace velmora {

/// Calls may come from any thread. Whoever calls owns a share of the semaphore until the call has
/// returned: a thread that is let through may drop its own share before that.
class CountingSemaphore {
 public:
  virtual ~CountingSemaphore() = default;

  /// Gives one unit back, and lets one thread through that waits for it.
  virtual void signal() noexcept = 0;

  /// Takes one unit; waits as long as there is none.
  virtual void wait() = 0;
};

}  // namespace velmora
