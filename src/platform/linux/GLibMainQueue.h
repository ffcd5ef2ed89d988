// The main thread's queue of tasks, run together with GLib's default main context.
//
// GLib is loaded only when the queue has to wait. A run that finds all tasks in the queue, one of
// which calls quit(), does not need GLib.
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

  /// Runs the tasks until quit() is called or has been called. While there is no task, runs the
  /// sources that libraries have attached to GLib's default main context. To be called on the main
  /// thread. An exception that leaves a task also leaves this function; the later tasks stay for
  /// another run. Throws PlatformError when it has to wait and GLib cannot be loaded.
  void run();

  /// Ends run() after the current task, or the next run() before its first task. Any thread.
  void quit();

 private:
  bool takeQuit();
  std::optional<std::function<void()>> takeTask();
  void await();
  /// Returns false when a task or quit() is pending.
  bool beginWaiting();
  /// To be called with `mutex_` locked.
  void wake() const;

  /// Guards the members below, because tasks come from any thread.
  std::mutex mutex_;
  std::deque<std::function<void()>> tasks_;
  bool quits_ = false;
  bool isWaiting_ = false;
};

}  // namespace velmora
