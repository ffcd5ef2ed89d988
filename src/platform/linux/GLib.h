// GLib, GObject and GIO, loaded at the first call of one of their functions instead of linked.
//
// Loading them takes longer than the rest of a --check, which needs none of them. Their headers are
// used as usual, except for macros that call a function: such a function would have to be linked.
#pragma once

#include "platform/linux/DynamicLibrary.h"

#include <gio/gio.h>

#include <cstddef>

namespace velmora {

/// The functions of these libraries that this folder calls, under their own names.
class GLib {
 private:
  /// Declared before the functions, because their initialisers use it.
  DynamicLibrary library_{"libgio-2.0.so.0"};

 public:
  // One argument gives the name and the type of a function, so that they cannot differ.
  // NOLINTBEGIN(bugprone-macro-parentheses,readability-identifier-naming)
#define VELMORA_GLIB_FUNCTION(name) decltype(&::name) name = library_.function(#name)
  VELMORA_GLIB_FUNCTION(g_dbus_is_interface_name);
  VELMORA_GLIB_FUNCTION(g_dbus_is_member_name);
  VELMORA_GLIB_FUNCTION(g_dbus_is_name);
  VELMORA_GLIB_FUNCTION(g_dbus_is_unique_name);
  VELMORA_GLIB_FUNCTION(g_dbus_message_bytes_needed);
  VELMORA_GLIB_FUNCTION(g_dbus_message_get_body);
  VELMORA_GLIB_FUNCTION(g_dbus_message_get_message_type);
  VELMORA_GLIB_FUNCTION(g_dbus_message_get_reply_serial);
  VELMORA_GLIB_FUNCTION(g_dbus_message_new_from_blob);
  VELMORA_GLIB_FUNCTION(g_dbus_message_new_method_call);
  VELMORA_GLIB_FUNCTION(g_dbus_message_new_signal);
  VELMORA_GLIB_FUNCTION(g_dbus_message_set_body);
  VELMORA_GLIB_FUNCTION(g_dbus_message_set_flags);
  VELMORA_GLIB_FUNCTION(g_dbus_message_set_serial);
  VELMORA_GLIB_FUNCTION(g_dbus_message_to_blob);
  VELMORA_GLIB_FUNCTION(g_error_free);
  VELMORA_GLIB_FUNCTION(g_find_program_in_path);
  VELMORA_GLIB_FUNCTION(g_free);
  VELMORA_GLIB_FUNCTION(g_key_file_get_boolean);
  VELMORA_GLIB_FUNCTION(g_key_file_get_locale_string);
  VELMORA_GLIB_FUNCTION(g_key_file_get_string);
  VELMORA_GLIB_FUNCTION(g_key_file_load_from_data);
  VELMORA_GLIB_FUNCTION(g_key_file_new);
  VELMORA_GLIB_FUNCTION(g_key_file_unref);
  VELMORA_GLIB_FUNCTION(g_main_context_iteration);
  VELMORA_GLIB_FUNCTION(g_main_context_unref);
  VELMORA_GLIB_FUNCTION(g_main_context_wakeup);
  VELMORA_GLIB_FUNCTION(g_object_unref);
  VELMORA_GLIB_FUNCTION(g_shell_parse_argv);
  VELMORA_GLIB_FUNCTION(g_spawn_async);
  VELMORA_GLIB_FUNCTION(g_strfreev);
  VELMORA_GLIB_FUNCTION(g_utf8_make_valid);
  VELMORA_GLIB_FUNCTION(g_utf8_validate);
  VELMORA_GLIB_FUNCTION(g_variant_builder_add);
  VELMORA_GLIB_FUNCTION(g_variant_builder_init);
  VELMORA_GLIB_FUNCTION(g_variant_get);
  VELMORA_GLIB_FUNCTION(g_variant_get_type_string);
  VELMORA_GLIB_FUNCTION(g_variant_new);
  VELMORA_GLIB_FUNCTION(g_variant_new_parsed);
  VELMORA_GLIB_FUNCTION(g_variant_new_string);
  VELMORA_GLIB_FUNCTION(g_variant_ref_sink);
  VELMORA_GLIB_FUNCTION(g_variant_unref);
#undef VELMORA_GLIB_FUNCTION
  // NOLINTEND(bugprone-macro-parentheses,readability-identifier-naming)
};

/// The libraries, loaded by the first call. Throws PlatformError as long as they cannot be loaded.
/// Any thread.
[[nodiscard]] const GLib& glib();

/// More memory in bytes than GLib needs to be loaded, or for one message or command.
inline constexpr std::size_t memoryForGLib = 8UL * 1024 * 1024;

/// Throws PlatformError (ENOMEM) unless this process can get `size` more bytes of memory now. GLib
/// ends the process when memory runs out, even after the request is in place. So whoever lets GLib
/// allocate calls this first.
void requireMemoryForGLib(std::size_t size = memoryForGLib);

}  // namespace velmora
