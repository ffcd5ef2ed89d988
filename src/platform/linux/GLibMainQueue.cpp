// The queue holds its tasks itself, instead of in one GSource each. A task then runs in C++ frames
// only and may throw. Without memory, async() throws, where GLib would end the process.
#include "platform/linux/GLibMainQueue.h"

#include "platform/linux/GLib.h"

#include <utility>

namespace velmora {

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
  // This also returns for an earlier wake-up, so that none is missed.
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
