#include "platform/linux/GLib.h"

#include "platform/linux/GLibLoading.h"

namespace velmora {

const GLib& glib() {
  // One for the process, as a library is.
  static const GLib loaded;
  return loaded;
}

void loadGLib() { static_cast<void>(glib()); }

}  // namespace velmora
