// Key files, the format of desktop entries and settings.
#pragma once

#include "platform/linux/GLibPointers.h"

#include <string_view>

namespace velmora {

/// The key file with the content `bytes`; null when there is a line that is not valid. Throws
/// PlatformError when GLib cannot be loaded, or the memory may not suffice.
[[nodiscard]] GLibPointer<GKeyFile> parseKeyFile(std::string_view bytes);

}  // namespace velmora
