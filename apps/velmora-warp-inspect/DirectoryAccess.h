// Whether the user may make files in a directory, found out without making any.
#pragma once

#include <string_view>

namespace velmora::inspect {

/// Whether files could be made in the directory at `path`, which is absolute: it is one and may be
/// written to; or nothing is there, and it could be made below the nearest directory above.
[[nodiscard]] bool canHoldNewFiles(std::string_view path);

}  // namespace velmora::inspect
