#include "platform/linux/GLibPointers.h"

#include <glib-object.h>

namespace velmora {

void GLibRelease::operator()(char* text) const noexcept { g_free(text); }
void GLibRelease::operator()(GError* error) const noexcept { g_error_free(error); }
void GLibRelease::operator()(GKeyFile* file) const noexcept { g_key_file_unref(file); }
void GLibRelease::operator()(GMainContext* context) const noexcept {
  g_main_context_unref(context);
}
void GLibRelease::operator()(GVariant* variant) const noexcept { g_variant_unref(variant); }

GLibPointer<GVariant> ownVariant(GVariant* floating) {
  return GLibPointer<GVariant>(g_variant_ref_sink(floating));
}

void GObjectRelease::operator()(void* object) const noexcept { g_object_unref(object); }

void retainGObject(void* object) noexcept { g_object_ref(object); }

}  // namespace velmora
