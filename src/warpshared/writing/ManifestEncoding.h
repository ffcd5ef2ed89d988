// Writes manifests, and the index of destroyed ones, as JSON. No program here calls it: it is for
// programs that warp folders, and for tests.
#pragma once

#include "json/EncodingError.h"
#include "warpshared/records/DestroyedManifestIndex.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <string>

namespace velmora {

/// The manifest as JSON without blanks. It decodes to an equal value if the manifest satisfies the
/// rules (docs/formats.md), which are not tested here.
///
/// Throws EncodingError for a text that is not UTF-8, for a date that
/// internetDateTime (Date.h) refuses, and for a number that is no value of its enumeration. Throws
/// std::bad_alloc.
[[nodiscard]] std::string encodeManifest(const VelmoraWarpSharedManifest& manifest);

/// The index as JSON without blanks. As encodeManifest.
[[nodiscard]] std::string encodeDestroyedManifestIndex(
    const VelmoraWarpSharedDestroyedManifestIndex& index);

}  // namespace velmora
