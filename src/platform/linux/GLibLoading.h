// Loads GLib before its first use.
#pragma once

namespace velmora {

/// Loads GLib and GIO, so that a program knows before its work whether it can reach the desktop.
/// Without this call, their first use loads them. Throws PlatformError with the system's message
/// when they cannot be loaded.
void loadGLib();

}  // namespace velmora
