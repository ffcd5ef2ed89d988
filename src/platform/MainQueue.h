// The queue on which a request is finished.
#pragma once

#include <functional>

namespace velmora {

class MainQueue {
 public:
  virtual ~MainQueue() = default;

  /// Runs `task` later on the main thread, after every task given before it; never within this
  /// call. May be called on any thread. When it throws, the task will not run.
  virtual void async(std::function<void()> task) = 0;
};

}  // namespace velmora
