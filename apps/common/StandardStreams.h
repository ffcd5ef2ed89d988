// The three standard streams of a process. A process may be started without some of them.
#pragma once

#include <string>

namespace velmora {

/// Opens "/dev/null" for each missing standard stream. Without it, the next opened file would get
/// the stream's number, and receive the output. To be called first in main.
void openMissingStandardStreams();

/// Reads all of standard input. Throws PlatformError.
[[nodiscard]] std::string readStandardInput();

}  // namespace velmora
