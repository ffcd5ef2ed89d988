// Hands a job to the application: writes a request file (docs/handoff-format.md), then posts a
// notification.
#pragma once

#include "handoff/FinderHandoffAction.h"
#include "platform/PlatformError.h"
#include "text/Text.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class PathStandardizer;
struct Platform;

struct HandoffRequest {
  FinderHandoffAction action = FinderHandoffAction::warpFolder;
  std::chrono::system_clock::time_point createdAt = {};
  std::vector<Text> folderPaths = {};
};

/// The request as JSON (RFC 8259) in one fixed layout: sorted keys, an indentation of two spaces,
/// " : " after a key, every "/" escaped, no newline at the end. `createdAt` is in UTC, rounded down
/// to whole seconds, as in RFC 3339: 2026-03-01T09:15:42Z. Throws posixError(EILSEQ) for a path
/// that is not UTF-8, because JSON cannot represent it.
[[nodiscard]] std::string encodeHandoffRequest(const HandoffRequest& request);

/// The notification on which the application reads the directory of request files.
inline constexpr std::string_view handoffNotificationName = "io.tolvane.Velmora.finderHandoff";

/// The path of the directory of request files. Neither creates nor checks the directory.
[[nodiscard]] Text handoffDirectoryPath(const Text& sharedWarpRoot, const PathStandardizer& paths);

/// The standardised absolute forms of `paths`, in the order given. Leaves out those that are empty,
/// and all but the first of equal paths.
[[nodiscard]] std::vector<Text> normalizedHandoffPaths(const std::vector<Text>& paths,
                                                       const PathStandardizer& standardizer);

/// Writes one request file with the normalised paths, named by a fresh UUID, then posts the
/// notification. The file is complete when it appears, and in place before the notification is
/// posted.
///
/// Does nothing, without an error, when no path is left. Throws the first error of the platform
/// unchanged; then there is no request file and no notification. Any number of processes may write
/// requests at the same time. Main thread only.
void writeHandoffRequest(FinderHandoffAction action, const std::vector<Text>& paths,
                         const Platform& platform);

}  // namespace velmora
