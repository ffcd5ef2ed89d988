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

/// The request as JSON (RFC 8259) in one fixed layout: keys sorted, two blanks of indentation,
/// " : " after a key, every "/" escaped, no newline at the end. `createdAt` is in UTC, cut off to
/// the whole second: 2026-03-01T09:15:42Z (RFC 3339). Throws posixError(EILSEQ) for a
/// path that is not UTF-8, since JSON cannot carry it.
[[nodiscard]] std::string encodeHandoffRequest(const HandoffRequest& request);

}  // namespace velmora
