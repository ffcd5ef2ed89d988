#include "platform/linux/GLib.h"

#include "platform/linux/GLibLoading.h"

namespace velmora {

const GLib& glib() {
  static const GLib loaded;
  return loaded;
}

void loadGLib() { static_cast<void>(glib()); }

}  // namespace velmora
