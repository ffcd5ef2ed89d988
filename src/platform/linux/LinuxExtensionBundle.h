// The program's identity, and its localized texts. Each language has a folder <language>.lproj with
// the table Localizable.strings; these are the same files as in the macOS bundle.
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

/// The directory of the language folders: $VELMORA_RESOURCE_DIR if that is an absolute path, so
/// that a program runs from the build tree; otherwise `installed`.
[[nodiscard]] std::string resourceDirectory(const Environment& environment,
                                            std::string_view installed);

class LinuxExtensionBundle final : public ExtensionBundle {
 public:
  /// `resourceDirectory` is called only when a folder is looked up: most requests show no text, and
  /// it accesses the file system. `fileReader` is kept by reference, and must also outlive the
  /// folders.
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
