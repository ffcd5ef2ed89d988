#include "Terminal.h"

#include "EnumTable.h"
#include "platform/linux/Environment.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmora::inspect {

namespace {

struct ToneColour {
  Tone value;
  std::string_view sequence;
};

constexpr ToneColour toneColours[] = {
    {Tone::good, "\x1b[32m"}, {Tone::doubtful, "\x1b[33m"}, {Tone::bad, "\x1b[31m"}};
constexpr std::string_view noColour = "\x1b[0m";

constexpr std::chrono::seconds patience{1};
constexpr std::chrono::milliseconds pause{100};
/// With the brackets and the percentage, a line of 28 columns.
constexpr std::size_t barWidth = 20;
/// A file that was read still has to be counted by advance().
constexpr double beforeTheEnd = 0.999;
/// Moves to the beginning of the line, and erases the line.
constexpr std::string_view erasure = "\r\x1b[K";

std::string bar(double done, std::size_t total) {
  const double part =
      std::clamp(done / static_cast<double>(std::max<std::size_t>(total, 1)), 0.0, 1.0);
  const auto filled = static_cast<std::size_t>(part * barWidth);
  const auto percentage = std::to_string(static_cast<int>(part * 100));
  std::string text(erasure);
  text.append("[").append(filled, '#').append(barWidth - filled, '-').append("] ");
  return text.append(percentage).append(" %");
}

}  // namespace

bool wantsColour(const Environment& environment) {
  return canErase(environment) && environment.variable("NO_COLOR").value_or("").empty();
}

bool canErase(const Environment& environment) {
  const std::string_view terminal = environment.variable("TERM").value_or("");
  return !terminal.empty() && terminal != "dumb";
}

std::string styledWord(std::string_view word, Tone tone, Style style, std::size_t width) {
  std::string text(word);
  if (style == Style::coloured) {
    text.insert(0, rowFor(toneColours, tone).sequence).append(noColour);
  }
  return text.append(width > word.size() ? width - word.size() : 0, ' ');
}

std::string indentedLine(std::size_t width, std::string_view line) {
  return std::string(width, ' ').append(line).append("\n");
}

std::string counted(std::size_t count, std::string_view one, std::string_view many) {
  return std::to_string(count).append(" ").append(count == 1 ? one : many);
}

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

void Progress::advanceWithinFile(double part) {
  done_ = std::floor(done_) + std::min(part, beforeTheEnd);
  show();
}

void Progress::advance() {
  done_ = std::floor(done_) + 1;
  show();
}

void Progress::show() {
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
