// Handing a job to the application: a request file where it looks, then a signal to look.
#pragma once

#include "handoff/FinderHandoffAction.h"
#include "text/Text.h"

#include <string_view>
#include <vector>

namespace velmora {

class PathStandardizer;
struct Platform;

/// The notification that tells the application to look there.
inline constexpr std::string_view handoffNotificationName = "io.tolvane.Velmora.finderHandoff";

/// The directory of request files under the shared Warp root. Its path alone: nothing is made or
/// checked.
[[nodiscard]] Text handoffDirectoryPath(const Text& sharedWarpRoot, const PathStandardizer& paths);

/// `paths`, each as its standardised absolute path, without empty ones and repetitions; of equal
/// paths the first is kept, in the order given.
[[nodiscard]] std::vector<Text> normalizedHandoffPaths(const std::vector<Text>& paths,
                                                       const PathStandardizer& standardizer);

/// Writes one request file with the normalised paths, named by a fresh UUID, then posts the
/// notification. The file is complete from the moment it appears, and in place before the
/// notification is posted.
///
/// Does nothing, successfully, when no path is left. Throws the first error of the platform,
/// unchanged, with nothing written or posted then. Requests written at the same moment, by any
/// number of processes, do not disturb each other. Main thread only.
void writeHandoffRequest(FinderHandoffAction action, const std::vector<Text>& paths,
                         const Platform& platform);

}  // namespace velmora
