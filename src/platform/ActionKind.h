// The two actions.
#pragma once

namespace velmora {

enum class ActionKind { warp, restore };

}  // namespace velmora
