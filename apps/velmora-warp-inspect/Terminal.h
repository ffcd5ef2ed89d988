// Text as a terminal shows it: colours, foreign bytes made harmless, and the progress bar.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

class Environment;

namespace inspect {

/// Whether a terminal understands colours and may show them: not a "dumb" one, and not when
/// $NO_COLOR holds anything.
[[nodiscard]] bool wantsColour(const Environment& environment);

/// Whether a terminal can take back what it shows.
[[nodiscard]] bool canErase(const Environment& environment);

enum class Style { plain, coloured };

enum class Tone { good, doubtful, bad };

/// `word`, in the colour of `tone` where the style has colours, followed by blanks up to `width`
/// characters. ASCII only.
[[nodiscard]] std::string styledWord(std::string_view word, Tone tone, Style style,
                                     std::size_t width = 0);

/// `bytes` as UTF-8: U+FFFD for each byte that is not part of well-formed UTF-8, all else as it
/// stands.
[[nodiscard]] std::string repairedUTF8(std::string_view bytes);

/// `bytes` in one line that steers no terminal: repaired; control characters, line separators and
/// the marks that change the direction of writing as "\n", "\t", "\r" or "\u{1b}", and a backslash
/// doubled.
[[nodiscard]] std::string displayText(std::string_view bytes);

/// `line` after `width` blanks, with its end.
[[nodiscard]] std::string indentedLine(std::size_t width, std::string_view line);

/// "1 file", "2 files".
[[nodiscard]] std::string counted(std::size_t count, std::string_view one, std::string_view many);

/// A bar for runs that take their time: none for a run that is done within a second, and no more
/// than ten changes a second.
class Progress {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// `show` writes to a terminal that can erase; `now` tells the time. Without `show` nothing is
  /// ever shown, and the time never asked.
  Progress(std::function<void(std::string_view)> show, std::function<Time()> now);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  /// The run begins, with `total` files to come.
  void begin(std::size_t total);
  /// One more file is done.
  void advance();
  /// Erases the bar where it is shown, so that something else can be. The bar comes back when it is
  /// due.
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

}  // namespace inspect

}  // namespace velmora
