// What a manifest must satisfy beyond its fields, whoever reads it.
#pragma once

#include "warpshared/VelmoraWarpSharedManifest.h"

namespace velmora {

/// The identity, the object key and the path.
[[nodiscard]] bool isIdentitySafe(const VelmoraWarpSharedManifest& manifest);

[[nodiscard]] bool areDatesFinite(const VelmoraWarpSharedManifest& manifest);

}  // namespace velmora
