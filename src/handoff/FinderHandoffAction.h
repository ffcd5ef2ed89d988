// The actions that a request can ask of the application.
#pragma once

#include <string_view>

namespace velmora {

/// The actions of the shared request format. The extension never sends `materializeMarkerItem`.
enum class FinderHandoffAction { warpFolder, restoreMarkerFolder, materializeMarkerItem };

/// The action's text in a request.
[[nodiscard]] constexpr std::string_view rawValue(FinderHandoffAction action) {
  switch (action) {
    case FinderHandoffAction::warpFolder:
      return "warpFolder";
    case FinderHandoffAction::restoreMarkerFolder:
      return "restoreMarkerFolder";
    case FinderHandoffAction::materializeMarkerItem:
      return "materializeMarkerItem";
  }
  return {};
}

}  // namespace velmora
