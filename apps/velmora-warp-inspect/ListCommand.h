// The command `list`: the manifests of the mirror, and whether their folders count as warped.
#pragma once

#include "ResolutionReport.h"
#include "Terminal.h"

#include <string>

namespace velmora::inspect {

/// Formats the report as JSON, one object per line.
[[nodiscard]] std::string toJSONLines(const ResolutionReport& resolution);

/// Formats the report as lines of text for people.
[[nodiscard]] std::string toText(const ResolutionReport& resolution, Style style);

}  // namespace velmora::inspect
