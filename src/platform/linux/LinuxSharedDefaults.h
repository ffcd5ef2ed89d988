// The settings that Velmora's programs share: one key file per suite, <suite>/defaults.conf in the
// user's configuration home, with all values in the group [Defaults].
#pragma once

#include "platform/SharedDefaults.h"
#include "platform/linux/XdgDirectories.h"

#include <optional>
#include <string_view>

namespace velmora {

class Environment;
class FileReader;

class LinuxSharedDefaults final : public SharedDefaults {
 public:
  /// `environment` and `fileReader` are kept by reference.
  LinuxSharedDefaults(const Environment& environment, const FileReader& fileReader,
                      HomeLookup homeLookup = passwordEntryHome);

  std::optional<Text> string(std::string_view suiteName, std::string_view key) const override;

 private:
  const Environment& environment_;
  const FileReader& fileReader_;
  HomeLookup homeLookup_;
};

}  // namespace velmora
