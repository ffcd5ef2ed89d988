#include "platform/linux/DesktopEntries.h"

#include "platform/FileReader.h"
#include "platform/PlatformError.h"
#include "platform/linux/ExecLine.h"
#include "platform/linux/GLib.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/KeyFile.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <utility>

namespace velmora {
namespace {

/// Far more than any desktop entry, even with many translations; a longer file is not read.
constexpr std::size_t maxEntryLength = 256 * 1024;

/// The key file at `path`; null when there is none.
GLibPointer<GKeyFile> readKeyFile(const std::string& path, const FileReader& fileReader) {
  std::string bytes;
  try {
    bytes = fileReader.read(path, maxEntryLength);
  } catch (const PlatformError&) {
    // Another directory may have an entry that can be read.
    return nullptr;
  }
  return parseKeyFile(bytes);
}

bool hasFlag(GKeyFile& file, const char* key) {
  return glib().g_key_file_get_boolean(&file, G_KEY_FILE_DESKTOP_GROUP, key, nullptr) != FALSE;
}

/// Takes ownership of `text`. Null becomes an empty text.
std::string ownText(char* text) {
  const GLibPointer<char> owner(text);
  return text == nullptr ? std::string() : std::string(text);
}

std::string textOf(GKeyFile& file, const char* key) {
  return ownText(
      glib().g_key_file_get_string(&file, G_KEY_FILE_DESKTOP_GROUP, key, /*error=*/nullptr));
}

/// The text in the user's language.
std::string translationOf(GKeyFile& file, const char* key) {
  return ownText(glib().g_key_file_get_locale_string(&file, G_KEY_FILE_DESKTOP_GROUP, key,
                                                     /*locale=*/nullptr, /*error=*/nullptr));
}

bool isProgram(const std::string& name) {
  return !ownText(glib().g_find_program_in_path(name.c_str())).empty();
}

/// An application with D-Bus activation has its identifier as bus name.
std::optional<std::string> busNameOf(GKeyFile& file, std::string_view identifier) {
  std::string name(identifier);
  if (!hasFlag(file, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE) ||
      !glib().g_dbus_is_name(name.c_str()) || glib().g_dbus_is_unique_name(name.c_str())) {
    return std::nullopt;
  }
  return name;
}

/// The entry in a key file; none when it is not usable.
std::optional<DesktopEntry> entryIn(GKeyFile& file, std::string_view identifier,
                                    const std::string& path) {
  const std::string tested = textOf(file, G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
  if (textOf(file, G_KEY_FILE_DESKTOP_KEY_TYPE) != G_KEY_FILE_DESKTOP_TYPE_APPLICATION ||
      (!tested.empty() && !isProgram(tested))) {
    return std::nullopt;
  }
  DesktopEntry entry = {.path = path,
                        .busName = busNameOf(file, identifier),
                        .command = {},
                        .workingDirectory = textOf(file, G_KEY_FILE_DESKTOP_KEY_PATH)};
  if (const std::string line = textOf(file, G_KEY_FILE_DESKTOP_KEY_EXEC); !line.empty()) {
    auto command = parseExecLine(line, {.icon = translationOf(file, G_KEY_FILE_DESKTOP_KEY_ICON),
                                        .name = translationOf(file, G_KEY_FILE_DESKTOP_KEY_NAME),
                                        .path = path});
    if (!command || command->empty() || !isProgram(command->front())) {
      return std::nullopt;
    }
    entry.command = *std::move(command);
  }
  return entry;
}

}  // namespace

std::optional<DesktopEntry> findDesktopEntry(std::string_view identifier,
                                             const std::vector<std::string>& dataDirectories,
                                             const FileReader& fileReader) {
  const std::string name = std::string(identifier).append(".desktop");
  std::string nameInSubfolders(identifier);
  std::replace(nameInSubfolders.begin(), nameInSubfolders.end(), '.', '/');
  nameInSubfolders.append(".desktop");
  for (const std::string& directory : dataDirectories) {
    const std::string applications = std::filesystem::path(directory) / "applications/";
    for (const std::string& path : {applications + name, applications + nameInSubfolders}) {
      const GLibPointer<GKeyFile> file = readKeyFile(path, fileReader);
      if (!file) {
        continue;
      }
      if (hasFlag(*file, G_KEY_FILE_DESKTOP_KEY_HIDDEN)) {
        return std::nullopt;
      }
      if (std::optional<DesktopEntry> entry = entryIn(*file, identifier, path)) {
        return entry;
      }
    }
  }
  return std::nullopt;
}

}  // namespace velmora
