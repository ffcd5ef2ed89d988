#include "platform/linux/KeyFile.h"

#include "platform/linux/GLib.h"

#include <cstddef>
#include <utility>

namespace velmora {
namespace {

/// More bytes of memory than GLib needs for a byte of any key file. Many short groups cost most.
constexpr std::size_t memoryPerByte = 100;

}  // namespace

GLibPointer<GKeyFile> parseKeyFile(std::string_view bytes) {
  requireMemoryForGLib(memoryForGLib + memoryPerByte * bytes.size());
  GLibPointer<GKeyFile> file(glib().g_key_file_new());
  const bool isValid = glib().g_key_file_load_from_data(file.get(), bytes.data(), bytes.size(),
                                                        G_KEY_FILE_NONE, nullptr) != FALSE;
  return isValid ? std::move(file) : nullptr;
}

}  // namespace velmora
