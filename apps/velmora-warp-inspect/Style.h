// How text for people stands out.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora {

class Environment;

namespace inspect {

enum class Tone { good, doubtful, bad };

/// Without colours, all text is returned as it stands.
class Style {
 public:
  explicit Style(bool isColoured) : isColoured_(isColoured) {}

  /// `word` in the colour of `tone`, followed by blanks up to `width` characters. ASCII only.
  [[nodiscard]] std::string word(std::string_view word, Tone tone, std::size_t width = 0) const;

 private:
  bool isColoured_;
};

/// Whether a terminal understands colours and may show them: not a "dumb" one, and not when
/// $NO_COLOR holds anything.
[[nodiscard]] bool wantsColour(const Environment& environment);

/// Whether a terminal can take back what it shows.
[[nodiscard]] bool canErase(const Environment& environment);

}  // namespace inspect

}  // namespace velmora
