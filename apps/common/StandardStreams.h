// The three streams that a program is started with, or should be.
#pragma once

#include <string>

namespace velmora {

/// Opens "/dev/null" for each standard stream that is missing: a file opened under its number would
/// receive what is written there. First thing in main.
void openMissingStandardStreams();

/// All of standard input. Throws PlatformError.
[[nodiscard]] std::string readStandardInput();

}  // namespace velmora
