// The bytes of a handoff request file (docs/handoff-format.md).
#pragma once

#include "handoff/FinderHandoffAction.h"
#include "text/Text.h"

#include <chrono>
#include <string>
#include <vector>

namespace velmora {

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

}  // namespace velmora
