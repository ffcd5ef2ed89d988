#include "platform/linux/Environment.h"

#include <unistd.h>

#include <utility>

namespace velmora {

Environment::Environment(Variables variables) : variables_(std::move(variables)) {}

std::optional<std::string_view> Environment::variable(std::string_view name) const {
  const auto found = variables_.find(name);
  if (found == variables_.end()) {
    return std::nullopt;
  }
  return found->second;
}

std::optional<std::string_view> Environment::absolutePath(std::string_view name) const {
  const std::optional<std::string_view> value = variable(name);
  return value && value->starts_with('/') ? value : std::nullopt;
}

Environment captureEnvironment() {
  Environment::Variables variables;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string_view text = *entry;
    const std::size_t equals = text.find('=');
    if (equals != std::string_view::npos) {
      variables.emplace(text.substr(0, equals), text.substr(equals + 1));
    }
  }
  return Environment(std::move(variables));
}

}  // namespace velmora
