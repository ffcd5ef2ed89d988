// The Warps that can enclose an item: the markers in the item and above it name them.
//
// A folder counts as warped only if a manifest names its path and a marker of the same Warp is in
// it. It encloses an item only if its path equals the path of the item or of one of its ancestors.
// So the markers at these paths name every Warp that can enclose the item, and where there is no
// marker there is no warped folder, whatever the mirror holds.
//
// "Equals" means canonical equivalence (Unicode, UAX #15), but the file system may tell the
// spellings of one name apart: a manifest may name another folder, spelt with other bytes, that has
// a marker of its own. That folder lies beside a folder of the path, under a name that is equal to
// the name on the path and has other bytes. So the parent of each name that can be spelt in another
// way is listed. When another spelling is there, or when that cannot be told, any Warp may enclose
// the item.
#pragma once

#include "resolution/StandardizedPath.h"
#include "text/Text.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace velmora {

class FileReader;
class PathStandardizer;

/// A folder with more names is not searched for other spellings.
inline constexpr std::size_t maxSearchedNameCount = 10'000;

/// Returns the identifiers in the markers at and above `paths`, each once; none when any Warp may
/// enclose one of the paths. Paths that are not absolute count for nothing. A marker that cannot be
/// read, or is no marker, confirms no manifest and so names no Warp. Looks into each folder once,
/// however many paths are below it.
///
/// Throws only when memory runs out. Takes no lock; the files may change meanwhile. Any thread.
[[nodiscard]] std::optional<std::vector<Text>> warpsAround(
    const std::vector<StandardizedPath>& paths, const FileReader& files,
    const PathStandardizer& standardizer);

}  // namespace velmora
