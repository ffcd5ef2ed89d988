// The command `doctor`: whether the actions can work on this system.
#pragma once

#include "Diagnosis.h"
#include "Terminal.h"

#include <string>

namespace velmora::inspect {

/// Formats the diagnosis as a JSON object.
[[nodiscard]] std::string toJSON(const Diagnosis& diagnosis);

/// Formats the diagnosis as lines of text for people.
[[nodiscard]] std::string toText(const Diagnosis& diagnosis, Style style);

}  // namespace velmora::inspect
