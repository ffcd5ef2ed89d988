#include "platform/linux/GLibPointers.h"

#include "platform/linux/GLib.h"

namespace velmora {

void GLibRelease::operator()(char* text) const noexcept { glib().g_free(text); }
void GLibRelease::operator()(char** texts) const noexcept { glib().g_strfreev(texts); }
void GLibRelease::operator()(GError* error) const noexcept { glib().g_error_free(error); }
void GLibRelease::operator()(GKeyFile* file) const noexcept { glib().g_key_file_unref(file); }
void GLibRelease::operator()(GVariant* variant) const noexcept { glib().g_variant_unref(variant); }

GLibPointer<GVariant> ownVariant(GVariant* floating) {
  return GLibPointer<GVariant>(glib().g_variant_ref_sink(floating));
}

void GObjectRelease::operator()(void* object) const noexcept { glib().g_object_unref(object); }

}  // namespace velmora
