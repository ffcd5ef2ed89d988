// The command `list`: the manifests of the mirror, and which folders they make warped ones.
#pragma once

#include "ResolutionReport.h"
#include "Terminal.h"

#include <string>

namespace velmora::inspect {

/// One JSON object a line.
[[nodiscard]] std::string toJSONLines(const ResolutionReport& resolution);

/// In lines for people.
[[nodiscard]] std::string toText(const ResolutionReport& resolution, Style style);

}  // namespace velmora::inspect
