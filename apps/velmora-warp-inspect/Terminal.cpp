#include "Terminal.h"

#include "EnumTable.h"
#include "platform/linux/Environment.h"
#include "text/UTF8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
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

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

bool isBetween(std::int32_t value, std::int32_t first, std::int32_t last) {
  return first <= value && value <= last;
}

/// Whether a terminal may interpret this code point instead of showing it.
bool steersTerminal(std::int32_t value) {
  const bool isControl = value < 0x20 || isBetween(value, 0x7F, 0x9F);
  const bool isLineSeparator = isBetween(value, 0x2028, 0x2029);
  const bool isDirectionMark = value == 0x061C || isBetween(value, 0x200E, 0x200F) ||
                               isBetween(value, 0x202A, 0x202E) || isBetween(value, 0x2066, 0x2069);
  return isControl || isLineSeparator || isDirectionMark;
}

std::string escaped(std::int32_t value) {
  switch (value) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      break;
  }
  std::array<char, 8> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
  return std::string("\\u{").append(digits.data(), end).append("}");
}

/// Replaces each code point by the result of `shown`, and each byte that is not UTF-8 by U+FFFD.
template <class Show>
std::string repaired(std::string_view bytes, Show shown) {
  std::string text;
  for (std::size_t position = 0; position < bytes.size();) {
    const internal::CodePoint point = internal::codePointAt(bytes, position);
    if (point.isUTF8()) {
      text += shown(point.value, bytes.substr(position, point.length));
    } else {
      text += replacementCharacter;
    }
    position += point.length;
  }
  return text;
}

constexpr std::chrono::seconds patience{1};
constexpr std::chrono::milliseconds pause{100};
constexpr std::size_t barWidth = 24;
/// Moves to the beginning of the line, and erases the line.
constexpr std::string_view erasure = "\r\x1b[K";

std::string bar(std::size_t done, std::size_t total) {
  const std::size_t filled = total > 0 ? std::min(done, total) * barWidth / total : 0;
  std::string text(erasure);
  text.append("[").append(filled, '#').append(barWidth - filled, '-').append("] ");
  return text.append(std::to_string(done)).append(" of ").append(counted(total, "file", "files"));
}

}  // namespace

bool wantsColour(const Environment& environment) {
  return canErase(environment) && environment.variable("NO_COLOR").value_or("").empty();
}

bool canErase(const Environment& environment) {
  return environment.variable("TERM").value_or("") != "dumb";
}

std::string styledWord(std::string_view word, Tone tone, Style style, std::size_t width) {
  std::string text(word);
  if (style == Style::coloured) {
    text.insert(0, rowFor(toneColours, tone).sequence).append(noColour);
  }
  return text.append(width > word.size() ? width - word.size() : 0, ' ');
}

std::string repairedUTF8(std::string_view bytes) {
  return repaired(bytes, [](std::int32_t, std::string_view piece) { return piece; });
}

std::string displayText(std::string_view bytes) {
  return repaired(bytes, [](std::int32_t value, std::string_view piece) {
    if (value == '\\') {
      return std::string("\\\\");
    }
    return steersTerminal(value) ? escaped(value) : std::string(piece);
  });
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
