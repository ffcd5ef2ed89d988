// The actions that a request can ask of the application.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace velmora {

/// The actions of the shared request format. The extension never sends `materializeMarkerItem`.
enum class FinderHandoffAction { warpFolder, restoreMarkerFolder, materializeMarkerItem };

/// The action's text in a request.
[[nodiscard]] constexpr std::string_view rawValue(FinderHandoffAction action) {
  constexpr std::array<std::string_view, 3> rawValues = {"warpFolder", "restoreMarkerFolder",
                                                         "materializeMarkerItem"};
  return rawValues[static_cast<std::size_t>(action)];
}

}  // namespace velmora
