// The files of a test process with GNUstep, and the environment of the programs that it starts.
#pragma once

#include "tests/support/Process.h"
#include "tests/support/ScratchDirectory.h"

namespace velmora {

/// A directory for all files that GNUstep writes and for the sockets of its distributed objects.
/// Environment variables pass it to GNUstep, which would otherwise use the user's home and sockets
/// of the whole system. Must be constructed before the first message to an object.
class ProcessEnvironment {
 public:
  /// Throws std::exception.
  ProcessEnvironment();

 private:
  ScratchDirectory directory_;
};

/// For programs that share defaults and distributed notifications with this process.
process::Environment gnustepEnvironment();

}  // namespace velmora
