// Reads an entry of a manifest from JSON, and raises its first fault.
#pragma once

#include "json/strict/JSONValue.h"
#include "text/Text.h"
#include "warpshared/records/VelmoraWarpSharedEntry.h"

namespace velmora::internal {

/// Reads `value` into `entry`, whose texts then refer to the document, and reuses the memory of
/// `entry`. Reads the fields in their order, and tests each rule (EntryRules.h) at its place among
/// them. The first fault raises a DecodingError: dataCorrupted at the field of the broken rule, or
/// what reading a field raised. After a fault, `entry` is invalid.
void decode(JSONValue value, WarpSharedEntry<TextView>& entry);

/// As above, into an entry that owns its texts.
void decode(JSONValue value, VelmoraWarpSharedEntry& entry);

}  // namespace velmora::internal
