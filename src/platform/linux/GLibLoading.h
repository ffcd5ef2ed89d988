// GLib, loaded ahead of its first use.
#pragma once

namespace velmora {

/// Loads GLib and GIO, for a program that wants to know before it begins whether it can reach the
/// desktop. Without this, they are loaded when first used. Throws PlatformError, with the system's
/// words, when they cannot be loaded.
void loadGLib();

}  // namespace velmora
