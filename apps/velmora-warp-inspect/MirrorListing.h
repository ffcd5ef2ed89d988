// The manifests of the mirror, as they are told.
#pragma once

#include "ResolutionReport.h"
#include "Terminal.h"

#include <functional>
#include <string_view>

namespace velmora::inspect {

/// Writes a piece of an answer.
using Write = std::function<void(std::string_view)>;

/// One JSON object a line.
void writeJSON(const ResolutionReport& resolution, const Write& write);

/// Lines for people.
void writeText(const ResolutionReport& resolution, Style style, const Write& write);

}  // namespace velmora::inspect
