#include "platform/linux/GLibMainQueue.h"

#include <glib.h>

#include <utility>

namespace velmora {

// The tasks are kept here rather than in one GSource each: a task then runs in frames of C++ only,
// so that it may throw, and when memory runs out async() throws where GLib would end the process.

void GLibMainQueue::async(std::function<void()> task) {
  {
    const std::lock_guard lock(mutex_);
    tasks_.push_back(std::move(task));
  }
  g_main_context_wakeup(nullptr);
}

void GLibMainQueue::run() {
  while (!takeQuit()) {
    if (const auto task = takeTask()) {
      (*task)();
    } else {
      // Returns also for a wake-up that came before it, so no task is missed.
      g_main_context_iteration(nullptr, /*may_block=*/TRUE);
    }
  }
}

void GLibMainQueue::quit() {
  {
    const std::lock_guard lock(mutex_);
    quits_ = true;
  }
  g_main_context_wakeup(nullptr);
}

bool GLibMainQueue::takeQuit() {
  const std::lock_guard lock(mutex_);
  return std::exchange(quits_, false);
}

std::optional<std::function<void()>> GLibMainQueue::takeTask() {
  const std::lock_guard lock(mutex_);
  if (tasks_.empty()) {
    return std::nullopt;
  }
  std::optional<std::function<void()>> task = std::move(tasks_.front());
  tasks_.pop_front();
  return task;
}

}  // namespace velmora
