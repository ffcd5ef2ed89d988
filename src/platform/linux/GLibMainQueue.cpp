#include "platform/linux/GLibMainQueue.h"

#include "platform/linux/GLib.h"

#include <utility>

namespace velmora {

// The tasks are kept here rather than in one GSource each: a task then runs in frames of C++ only,
// so that it may throw, and when memory runs out async() throws where GLib would end the process.

void GLibMainQueue::async(std::function<void()> task) {
  const std::lock_guard lock(mutex_);
  tasks_.push_back(std::move(task));
  wake();
}

void GLibMainQueue::run() {
  while (!takeQuit()) {
    if (const auto task = takeTask()) {
      (*task)();
    } else {
      await();
    }
  }
}

void GLibMainQueue::quit() {
  const std::lock_guard lock(mutex_);
  quits_ = true;
  wake();
}

void GLibMainQueue::await() {
  const GLib& library = glib();
  if (!beginWaiting()) {
    return;
  }
  // Returns also for a wake-up that came before it, so nothing is missed.
  library.g_main_context_iteration(nullptr, /*may_block=*/TRUE);
  const std::lock_guard lock(mutex_);
  isWaiting_ = false;
}

bool GLibMainQueue::beginWaiting() {
  const std::lock_guard lock(mutex_);
  isWaiting_ = tasks_.empty() && !quits_;
  return isWaiting_;
}

void GLibMainQueue::wake() const {
  if (isWaiting_) {
    glib().g_main_context_wakeup(nullptr);
  }
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
