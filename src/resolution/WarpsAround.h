// Finds the Warps that can enclose an item, by the markers in the item and above it.
//
// A folder is warped only if a manifest names its path and it contains a marker of the same Warp.
// It encloses an item only if its path equals the path of the item or of one of its ancestors. So
// the markers at these paths name every Warp that can enclose the item. Without a marker there is
// no warped folder, whatever the mirror contains.
//
// "Equals" means canonical equivalence (Unicode UAX #15), but a file system may have both spellings
// of a name as two folders. A manifest may then name the other folder, which has a marker of its
// own. The other folder has the same parent. So the parent of each name that has another spelling
// is listed. If it has another spelling of the name, or if it cannot be listed, any Warp may
// enclose the item.
#pragma once

#include "resolution/WarpRoots.h"
#include "text/Text.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace velmora {

class FileReader;
class PathStandardizer;

/// The longest listing that is searched for other spellings.
inline constexpr std::size_t maxSearchedNameCount = 10'000;

/// Returns the identifiers of the markers in and above `paths`, each once. An empty list means that
/// no Warp encloses a path. std::nullopt means that every Warp may. Ignores paths that are not
/// absolute. A marker that cannot be read or decoded confirms no manifest, so it names no Warp.
/// Looks into each folder once.
///
/// Throws only when memory runs out. Takes no lock; the files may change meanwhile. Any thread.
[[nodiscard]] std::optional<std::vector<Text>> warpsAround(
    const std::vector<StandardizedPath>& paths, const FileReader& files,
    const PathStandardizer& standardizer);

}  // namespace velmora
