// Threads that end with their scope, because some standard libraries lack std::jthread.
#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <utility>

namespace velmora {

/// Joined at the end of its life.
class JoiningThread {
 public:
  explicit JoiningThread(std::function<void()> work) : thread_(std::move(work)) {}
  JoiningThread(JoiningThread&&) = default;
  JoiningThread(const JoiningThread&) = delete;
  JoiningThread& operator=(const JoiningThread&) = delete;
  JoiningThread& operator=(JoiningThread&&) = delete;
  ~JoiningThread() {
    if (thread_.joinable()) {
      thread_.join();
    }
  }

 private:
  std::thread thread_;
};

/// Repeats `step` on its own thread until the end of its life.
class RepeatingThread {
 public:
  explicit RepeatingThread(std::function<void()> step)
      : thread_([this, step = std::move(step)] {
          while (!isEnding_) {
            step();
          }
        }) {}
  RepeatingThread(const RepeatingThread&) = delete;
  RepeatingThread& operator=(const RepeatingThread&) = delete;
  ~RepeatingThread() { isEnding_ = true; }

 private:
  std::atomic<bool> isEnding_ = false;
  JoiningThread thread_;
};

}  // namespace velmora
