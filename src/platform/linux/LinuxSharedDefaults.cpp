#include "platform/linux/LinuxSharedDefaults.h"

#include "platform/FileReader.h"
#include "platform/linux/Environment.h"
#include "platform/linux/GLib.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/KeyFile.h"

#include <cstddef>
#include <exception>
#include <string>
#include <utility>

namespace velmora {
namespace {

/// Far more than any settings, which are a few lines; a longer file is not read.
constexpr std::size_t maxSettingsLength = 256 * 1024;

std::optional<Text> stringInKeyFile(std::string_view bytes, std::string_view key) {
  // GLib would end a value at a NUL. Such a file is no text, and is refused as a whole.
  if (bytes.find('\0') != std::string_view::npos) {
    return std::nullopt;
  }
  const GLibPointer<GKeyFile> file = parseKeyFile(bytes);
  if (!file) {
    return std::nullopt;
  }
  GError* failure = nullptr;
  const GLibPointer<char> value(
      glib().g_key_file_get_string(file.get(), "Defaults", std::string(key).c_str(), &failure));
  // GLib may return an incomplete value together with an error.
  const GLibPointer<GError> error(failure);
  if (error || !value) {
    return std::nullopt;
  }
  return Text(value.get());
}

}  // namespace

LinuxSharedDefaults::LinuxSharedDefaults(const Environment& environment,
                                         const FileReader& fileReader, HomeLookup homeLookup)
    : environment_(environment), fileReader_(fileReader), homeLookup_(std::move(homeLookup)) {}

std::optional<Text> LinuxSharedDefaults::string(std::string_view suiteName,
                                                std::string_view key) const {
  std::optional<std::string> path = xdgConfigHome(environment_, homeLookup_);
  if (!path) {
    return std::nullopt;
  }
  path->append("/").append(suiteName).append("/defaults.conf");
  try {
    // Not read by GLib, which would wait for ever on a named pipe.
    return stringInKeyFile(fileReader_.read(*path, maxSettingsLength), key);
  } catch (const std::exception&) {
    // Settings that cannot be read count as missing.
    return std::nullopt;
  }
}

}  // namespace velmora
