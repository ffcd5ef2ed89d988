// A bar on the terminal for runs that take their time.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

namespace velmora::inspect {

/// Shows nothing for a run that is done within a second, and no more than ten changes a second.
class Progress {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// `show` writes to a terminal that can erase; `now` tells the time. Without `show` nothing is
  /// ever shown, and the time never asked.
  Progress(std::function<void(std::string_view)> show, std::function<Time()> now);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  /// The run begins, with so many files before it.
  void begin(std::size_t total);
  /// One more file is done.
  void advance();
  /// Erases the bar where it is shown, so that something else can be. It comes back when it is due.
  void hide();

 private:
  std::function<void(std::string_view)> show_;
  std::function<Time()> now_;
  std::size_t total_ = 0;
  std::size_t done_ = 0;
  Time begin_;
  std::optional<Time> shownAt_;
  bool isVisible_ = false;
};

}  // namespace velmora::inspect
