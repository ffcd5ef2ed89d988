// The queue of the main thread, on which a request ends.
#pragma once

#include <functional>

namespace velmora {

class MainQueue {
 public:
  virtual ~MainQueue() = default;

  /// Runs `task` later on the main thread, after all earlier tasks and never within this call. May
  /// be called on any thread. When this call throws, `task` will not run.
  virtual void async(std::function<void()> task) = 0;
};

}  // namespace velmora
