// Text for a terminal: colours, columns, and the progress bar.
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

/// Whether a terminal may show colours: whether it can erase a line, and $NO_COLOR is empty.
[[nodiscard]] bool wantsColour(const Environment& environment);

/// Whether a terminal can erase a line. False for a "dumb" terminal, and if $TERM is empty.
[[nodiscard]] bool canErase(const Environment& environment);

enum class Style { plain, coloured };

enum class Tone { good, doubtful, bad };

/// Returns `word`, followed by blanks up to `width` characters. A coloured style adds the colour of
/// `tone`. `word` must be ASCII.
[[nodiscard]] std::string styledWord(std::string_view word, Tone tone, Style style,
                                     std::size_t width = 0);

/// Returns `width` blanks, `line` and a line feed.
[[nodiscard]] std::string indentedLine(std::size_t width, std::string_view line);

/// Formats a number with its noun: "1 file", "2 files".
[[nodiscard]] std::string counted(std::size_t count, std::string_view one, std::string_view many);

/// A progress bar for runs of more than one second. It changes at most ten times a second.
class Progress {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// `show` writes to a terminal that can erase a line. `now` returns the time. Without `show`, the
  /// bar never appears, and `now` is never called.
  Progress(std::function<void(std::string_view)> show, std::function<Time()> now);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  /// Begins a run over `total` files.
  void begin(std::size_t total);
  /// `part`, from 0 to 1, of the current file has been read.
  void advanceWithinFile(double part);
  /// Counts one more file as done.
  void advance();
  /// Erases the bar if it is visible, so that the program can print. The next advance shows it
  /// again.
  void hide();

 private:
  void show();

  std::function<void(std::string_view)> show_;
  std::function<Time()> now_;
  std::size_t total_ = 0;
  /// Files, and parts of the current one.
  double done_ = 0;
  Time begin_;
  std::optional<Time> shownAt_;
  bool isVisible_ = false;
};

}  // namespace inspect

}  // namespace velmora
