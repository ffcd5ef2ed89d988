#include "Progress.h"

#include "DisplayText.h"

#include <algorithm>
#include <string>
#include <utility>

namespace velmora::inspect {

namespace {

constexpr std::chrono::seconds patience{1};
constexpr std::chrono::milliseconds pause{100};
constexpr std::size_t barWidth = 24;
/// To the beginning of the line, and the rest of it blank.
constexpr std::string_view erasure = "\r\x1b[K";

std::string bar(std::size_t done, std::size_t total) {
  const std::size_t filled = total > 0 ? std::min(done, total) * barWidth / total : 0;
  std::string text(erasure);
  text.append("[").append(filled, '#').append(barWidth - filled, '-').append("] ");
  return text.append(std::to_string(done)).append(" of ").append(counted(total, "file", "files"));
}

}  // namespace

Progress::Progress(std::function<void(std::string_view)> show, std::function<Time()> now)
    : show_(std::move(show)), now_(std::move(now)) {}

Progress::~Progress() { hide(); }

void Progress::begin(std::size_t total) {
  total_ = total;
  done_ = 0;
  if (show_) {
    begin_ = now_();
  }
}

void Progress::advance() {
  ++done_;
  if (!show_) {
    return;
  }
  const Time now = now_();
  if (now - begin_ < patience || (shownAt_.has_value() && now - *shownAt_ < pause)) {
    return;
  }
  show_(bar(done_, total_));
  shownAt_ = now;
  isVisible_ = true;
}

void Progress::hide() {
  if (std::exchange(isVisible_, false)) {
    show_(erasure);
  }
}

}  // namespace velmora::inspect
