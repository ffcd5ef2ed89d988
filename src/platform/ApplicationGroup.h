// The group in which the extension and the application share files and settings.
#pragma once

#include <string_view>

namespace velmora {

inline constexpr std::string_view applicationGroupIdentifier = "group.io.tolvane.Velmora";

}  // namespace velmora
