// What is told of a valid manifest.
#pragma once

#include "warpshared/reading/ManifestDecoding.h"

#include <string>

namespace velmora::inspect {

/// As a JSON object.
[[nodiscard]] std::string toJSON(const ManifestSummary& manifest);

/// All but folder and date, in a line for people.
[[nodiscard]] std::string toText(const ManifestSummary& manifest);

}  // namespace velmora::inspect
