#include "platform/linux/GLib.h"

#include "platform/PlatformError.h"
#include "platform/linux/GLibLoading.h"

#include <sys/mman.h>

#include <cerrno>

namespace velmora {

const GLib& glib() {
  static const GLib loaded = [] {
    // The libraries also allocate while they are loaded.
    requireMemoryForGLib();
    return GLib();
  }();
  return loaded;
}

void requireMemoryForGLib(std::size_t size) {
  void* const memory =
      ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) {
    throw posixError(ENOMEM);
  }
  ::munmap(memory, size);
}

void loadGLib() { static_cast<void>(glib()); }

}  // namespace velmora
