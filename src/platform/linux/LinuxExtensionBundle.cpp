#include "platform/linux/LinuxExtensionBundle.h"

#include "platform/FileReader.h"
#include "platform/linux/Environment.h"
#include "platform/linux/StringsTable.h"

#include <cstddef>
#include <exception>
#include <utility>

namespace velmora {
namespace {

/// Far more than any table of messages; a longer file is not read.
constexpr std::size_t maxTableLength = 1024 * 1024;

class StringsFolder final : public LocalizationFolder {
 public:
  StringsFolder(std::string directory, const FileReader& fileReader)
      : directory_(std::move(directory)), fileReader_(fileReader) {}

  std::string localizedString(std::string_view key, std::string_view value) const override {
    const StringsTable table = readTable();
    const auto found = table.find(key);
    return found == table.end() ? std::string(value) : found->second;
  }

 private:
  StringsTable readTable() const {
    try {
      return parseStringsTable(
                 fileReader_.read(directory_ + "/Localizable.strings", maxTableLength))
          .value_or(StringsTable());
    } catch (const std::exception&) {
      // A table that cannot be read counts as faulty; the caller's English text is used.
      return {};
    }
  }

  std::string directory_;
  const FileReader& fileReader_;
};

}  // namespace

std::string resourceDirectory(const Environment& environment, std::string_view installed) {
  return std::string(environment.absolutePath("VELMORA_RESOURCE_DIR").value_or(installed));
}

LinuxExtensionBundle::LinuxExtensionBundle(std::optional<Text> bundleIdentifier,
                                           std::function<std::string()> resourceDirectory,
                                           const FileReader& fileReader)
    : bundleIdentifier_(std::move(bundleIdentifier)),
      resourceDirectory_(std::move(resourceDirectory)),
      fileReader_(fileReader) {}

std::optional<Text> LinuxExtensionBundle::bundleIdentifier() const { return bundleIdentifier_; }

std::unique_ptr<LocalizationFolder> LinuxExtensionBundle::localizationFolder(
    std::string_view language) const {
  std::string directory = resourceDirectory_();
  directory.append("/").append(language).append(".lproj");
  if (!fileReader_.isDirectory(directory)) {
    return nullptr;
  }
  return std::make_unique<StringsFolder>(std::move(directory), fileReader_);
}

}  // namespace velmora
