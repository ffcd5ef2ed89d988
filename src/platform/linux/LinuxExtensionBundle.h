// The program's identity, and its localized texts: one folder <language>.lproj per language with
// the table Localizable.strings, the same files as in the macOS bundle.
#pragma once

#include "platform/ExtensionBundle.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

class Environment;
class FileReader;

/// The directory that holds the folders of the languages: $VELMORA_RESOURCE_DIR when that is an
/// absolute path, so that a program runs from the build tree; else `installed`.
[[nodiscard]] std::string resourceDirectory(const Environment& environment,
                                            std::string_view installed);

class LinuxExtensionBundle final : public ExtensionBundle {
 public:
  /// `resourceDirectory` is asked when a folder is: most requests show no text, and finding its
  /// place costs looks at the file system. `fileReader` is kept by reference and outlives the
  /// folders, too.
  LinuxExtensionBundle(std::optional<Text> bundleIdentifier,
                       std::function<std::string()> resourceDirectory,
                       const FileReader& fileReader);

  std::optional<Text> bundleIdentifier() const override;
  std::unique_ptr<LocalizationFolder> localizationFolder(std::string_view language) const override;

 private:
  std::optional<Text> bundleIdentifier_;
  std::function<std::string()> resourceDirectory_;
  const FileReader& fileReader_;
};

}  // namespace velmora
