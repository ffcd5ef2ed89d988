// Where Velmora's programs share files on Linux.
//
// The group container is a directory that the application makes in the user's data home; its being
// there is what an entitlement is elsewhere. $VELMORA_GROUP_CONTAINER, when absolute, puts the
// container of every group at another place.
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
  /// Both references are kept.
  LinuxSharedLocations(const Environment& environment, const FileReader& fileReader,
                       HomeLookup homeLookup = passwordEntryHome);

  std::optional<Text> groupContainer(std::string_view groupIdentifier) const override;
  std::vector<Text> applicationSupportDirectories() const override;

  /// The container of every group by $VELMORA_GROUP_CONTAINER: what groupContainer() then returns.
  /// None when the variable does not count.
  [[nodiscard]] std::optional<Text> groupContainerOfEnvironment() const;

 private:
  const Environment& environment_;
  const FileReader& fileReader_;
  HomeLookup homeLookup_;
};

}  // namespace velmora
