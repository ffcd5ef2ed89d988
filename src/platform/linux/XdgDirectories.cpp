#include "platform/linux/XdgDirectories.h"

#include "platform/linux/Environment.h"
#include "platform/linux/SeparatedList.h"

#include <string_view>
#include <utility>

namespace velmora {
namespace {

std::optional<std::string> homeDirectory(const Environment& environment,
                                         const HomeLookup& homeLookup) {
  if (const auto home = environment.absolutePath("HOME")) {
    return std::string(*home);
  }
  return homeLookup();
}

std::optional<std::string> xdgDirectory(const Environment& environment, std::string_view variable,
                                        std::string_view belowHome, const HomeLookup& homeLookup) {
  if (const auto directory = environment.absolutePath(variable)) {
    return std::string(*directory);
  }
  std::optional<std::string> home = homeDirectory(environment, homeLookup);
  if (home) {
    home->append(belowHome);
  }
  return home;
}

}  // namespace

std::optional<std::string> xdgDataHome(const Environment& environment,
                                       const HomeLookup& homeLookup) {
  return xdgDirectory(environment, "XDG_DATA_HOME", "/.local/share", homeLookup);
}

std::vector<std::string> xdgDataDirectories(const Environment& environment,
                                            const HomeLookup& homeLookup) {
  std::vector<std::string> directories;
  if (std::optional<std::string> home = xdgDataHome(environment, homeLookup)) {
    directories.push_back(*std::move(home));
  }
  std::string_view shared = environment.variable("XDG_DATA_DIRS").value_or("");
  if (shared.empty()) {
    shared = "/usr/local/share:/usr/share";
  }
  while (!shared.empty()) {
    if (const std::string_view directory = takePart(shared, ':'); directory.starts_with('/')) {
      directories.emplace_back(directory);
    }
  }
  return directories;
}

std::optional<std::string> xdgConfigHome(const Environment& environment,
                                         const HomeLookup& homeLookup) {
  return xdgDirectory(environment, "XDG_CONFIG_HOME", "/.config", homeLookup);
}

}  // namespace velmora
