#include "Style.h"

#include "platform/linux/Environment.h"

namespace velmora::inspect {

namespace {

std::string_view colourOf(Tone tone) {
  switch (tone) {
    case Tone::good:
      return "\x1b[32m";
    case Tone::doubtful:
      return "\x1b[33m";
    case Tone::bad:
      break;
  }
  return "\x1b[31m";
}

constexpr std::string_view plain = "\x1b[0m";

}  // namespace

std::string Style::word(std::string_view word, Tone tone, std::size_t width) const {
  std::string text;
  text.append(isColoured_ ? colourOf(tone) : "").append(word).append(isColoured_ ? plain : "");
  return text.append(width > word.size() ? width - word.size() : 0, ' ');
}

bool wantsColour(const Environment& environment) {
  return canErase(environment) && environment.variable("NO_COLOR").value_or("").empty();
}

bool canErase(const Environment& environment) {
  return environment.variable("TERM").value_or("") != "dumb";
}

}  // namespace velmora::inspect
