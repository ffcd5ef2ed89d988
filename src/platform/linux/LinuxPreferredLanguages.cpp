#include "platform/linux/LinuxPreferredLanguages.h"

#include "platform/linux/Environment.h"
#include "platform/linux/SeparatedList.h"

#include <array>
#include <string_view>

namespace velmora {
namespace {

std::string_view valueOrEmpty(const Environment& environment, std::string_view name) {
  return environment.variable(name).value_or(std::string_view());
}

std::string_view messageLocale(const Environment& environment) {
  constexpr std::array<std::string_view, 3> variables = {"LC_ALL", "LC_MESSAGES", "LANG"};
  for (const std::string_view name : variables) {
    const std::string_view value = valueOrEmpty(environment, name);
    if (!value.empty()) {
      return value;
    }
  }
  return {};
}

bool isUntranslated(std::string_view locale) {
  return locale.empty() || locale == "C" || locale == "POSIX";
}

std::string_view withoutCodesetAndModifier(std::string_view locale) {
  return locale.substr(0, locale.find_first_of(".@"));
}

void appendTag(std::vector<Text>& tags, std::string_view locale) {
  const std::string_view tag = withoutCodesetAndModifier(locale);
  if (!tag.empty()) {
    tags.emplace_back(tag);
  }
}

}  // namespace

LinuxPreferredLanguages::LinuxPreferredLanguages(const Environment& environment)
    : environment_(environment) {}

std::vector<Text> LinuxPreferredLanguages::preferredLanguages() const {
  const std::string_view locale = messageLocale(environment_);
  if (isUntranslated(locale)) {
    return {};
  }
  std::vector<Text> tags;
  std::string_view list = valueOrEmpty(environment_, "LANGUAGE");
  if (list.empty()) {
    appendTag(tags, locale);
  }
  while (!list.empty()) {
    const std::string_view entry = takePart(list, ':');
    // "C" and "POSIX" mean the program's own language, so the list ends here.
    if (entry == "C" || entry == "POSIX") {
      break;
    }
    appendTag(tags, entry);
  }
  return tags;
}

}  // namespace velmora
