// The command `doctor`: whether the actions can do their work here.
#pragma once

#include "Diagnosis.h"
#include "Terminal.h"

#include <string>

namespace velmora::inspect {

/// As a JSON object.
[[nodiscard]] std::string toJSON(const Diagnosis& diagnosis);

/// In lines for people.
[[nodiscard]] std::string toText(const Diagnosis& diagnosis, Style style);

}  // namespace velmora::inspect
