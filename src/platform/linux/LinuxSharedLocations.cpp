#include "platform/linux/LinuxSharedLocations.h"

#include "platform/FileReader.h"
#include "platform/linux/Environment.h"

#include <string>
#include <utility>

namespace velmora {

namespace {

constexpr std::string_view groupContainerVariable = "VELMORA_GROUP_CONTAINER";

}  // namespace

LinuxSharedLocations::LinuxSharedLocations(const Environment& environment,
                                           const FileReader& fileReader, HomeLookup homeLookup)
    : environment_(environment), fileReader_(fileReader), homeLookup_(std::move(homeLookup)) {}

std::optional<Text> LinuxSharedLocations::groupContainer(std::string_view groupIdentifier) const {
  if (std::optional<Text> container = groupContainerOfEnvironment()) {
    return container;
  }
  std::optional<Text> container = groupContainerInDataHome(groupIdentifier);
  return container && fileReader_.isDirectory(*container) ? container : std::nullopt;
}

std::optional<Text> LinuxSharedLocations::groupContainerInDataHome(
    std::string_view groupIdentifier) const {
  std::optional<std::string> dataHome = xdgDataHome(environment_, homeLookup_);
  if (!dataHome) {
    return std::nullopt;
  }
  return Text(dataHome->append("/").append(groupIdentifier));
}

std::vector<Text> LinuxSharedLocations::applicationSupportDirectories() const {
  std::optional<std::string> dataHome = xdgDataHome(environment_, homeLookup_);
  if (!dataHome) {
    return {};
  }
  return {Text(*std::move(dataHome))};
}

std::optional<Text> LinuxSharedLocations::groupContainerOfEnvironment() const {
  return environment_.absolutePath(groupContainerVariable);
}

}  // namespace velmora
