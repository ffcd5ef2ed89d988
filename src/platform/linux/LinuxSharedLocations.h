// The directories that Velmora's programs share on Linux.
//
// The group container is a directory that the application creates in the user's data home. Its
// existence has the role of an entitlement on other systems. An absolute $VELMORA_GROUP_CONTAINER
// replaces the container of every group.
#pragma once

#include "platform/SharedLocations.h"
#include "platform/linux/XdgDirectories.h"

#include <optional>
#include <string_view>
#include <vector>

namespace velmora {

class Environment;
class FileReader;

class LinuxSharedLocations final : public SharedLocations {
 public:
  /// `environment` and `fileReader` are kept by reference.
  LinuxSharedLocations(const Environment& environment, const FileReader& fileReader,
                       HomeLookup homeLookup = passwordEntryHome);

  std::optional<Text> groupContainer(std::string_view groupIdentifier) const override;
  std::vector<Text> applicationSupportDirectories() const override;

  /// The path at which the application creates the container of a group, whether or not something
  /// is there. None without a data home.
  [[nodiscard]] std::optional<Text> groupContainerInDataHome(
      std::string_view groupIdentifier) const;

  /// The container of every group by $VELMORA_GROUP_CONTAINER: what groupContainer() then returns.
  /// None when the variable does not count.
  [[nodiscard]] std::optional<Text> groupContainerOfEnvironment() const;

 private:
  const Environment& environment_;
  const FileReader& fileReader_;
  HomeLookup homeLookup_;
};

}  // namespace velmora
