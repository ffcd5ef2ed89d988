// Which of the selected items the action may be applied to.
#pragma once

#include "text/FileURL.h"
#include "text/Text.h"

#include <string_view>
#include <vector>

namespace velmora {

class PathStandardizer;
class WarpedFolders;
struct Platform;

/// The name of the file that the application leaves in a warped folder.
inline constexpr std::string_view warpMarkerFileName = ".velmora-warped.json";

/// The standardised paths of the folders that count as warped, newest Warp first.
[[nodiscard]] std::vector<Text> warpedFolderPaths(const WarpedFolders& warpedFolders,
                                                  const PathStandardizer& standardizer);

/// The standardised paths of the items that suit the action, without repetitions, in the order of
/// the selection; empty when none does.
///
/// - Warp takes what is a directory, links followed, and neither is nor lies in a warped folder.
/// - Restore takes a warped folder that holds its marker; not a folder inside one.
///
/// Never fails outward: what cannot be looked at does not suit. Takes no lock; the folders may
/// change meanwhile. Throws only when memory runs out.
[[nodiscard]] std::vector<Text> screenSelection(const std::vector<FileURL>& selection,
                                                const Platform& platform,
                                                const WarpedFolders& warpedFolders);

}  // namespace velmora
