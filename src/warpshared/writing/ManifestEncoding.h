// Writes manifests, and the index of destroyed ones, as JSON. No program here calls it: it is for
// programs that warp folders, and for tests.
#pragma once

#include "warpshared/records/DestroyedManifestIndex.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <string>

namespace velmora {

/// The manifest as JSON without blanks, which decodes to an equal value. Each date is one that
/// internetDateTime (Date.h) can write. Throws std::bad_alloc.
[[nodiscard]] std::string encodeManifest(const VelmoraWarpSharedManifest& manifest);

/// The index as JSON without blanks, which decodes to an equal value. As encodeManifest.
[[nodiscard]] std::string encodeDestroyedManifestIndex(
    const VelmoraWarpSharedDestroyedManifestIndex& index);

}  // namespace velmora
