// Reads one entry of a shared Warp manifest, with the checks that need nothing but the entry.
#pragma once

#include "json/JSONValue.h"
#include "text/Text.h"
#include "warpshared/VelmoraWarpSharedManifest.h"

namespace velmora {

/// Reads `value` into `entry`, which refers to the document then, in the memory of the entry that
/// was there before. The fields are read in their order; a path or a size that is not allowed is
/// refused at once, all else when every field is read. Each fault is a DecodingError: dataCorrupted
/// at the key concerned, or what reading the field raised. `entry` is worth nothing then.
void decode(JSONValue value, WarpSharedEntry<TextView>& entry);

/// As above, into an entry of its own.
void decode(JSONValue value, VelmoraWarpSharedEntry& entry);

/// A copy that owns its texts.
[[nodiscard]] VelmoraWarpSharedEntry ownedEntry(const WarpSharedEntry<TextView>& entry);

}  // namespace velmora
