// The main thread's queue of tasks, run together with GLib's default main context.
//
// GLib is loaded when there is something to wait for: whoever finds all tasks in the queue, and is
// told to quit by one of them, runs without it.
#pragma once

#include "platform/MainQueue.h"

#include <deque>
#include <functional>
#include <mutex>
#include <optional>

namespace velmora {

class GLibMainQueue final : public MainQueue {
 public:
  void async(std::function<void()> task) override;

  /// Runs the tasks, and whatever libraries have attached to GLib's default main context, on the
  /// calling thread, which is to be the main one, until quit() is called or has been called. An
  /// exception that leaves a task leaves this function; the tasks behind it stay, for another run.
  /// Throws PlatformError when it has to wait and GLib cannot be loaded.
  void run();

  /// Ends run() after the task that runs now, or the next run() before its first one. Any thread.
  void quit();

 private:
  bool takeQuit();
  std::optional<std::function<void()>> takeTask();
  void await();
  /// False when there is something to do already.
  bool beginWaiting();
  /// To be called under the lock.
  void wake() const;

  // Guards what is below: tasks come from any thread.
  std::mutex mutex_;
  std::deque<std::function<void()>> tasks_;
  bool quits_ = false;
  bool isWaiting_ = false;
};

}  // namespace velmora
