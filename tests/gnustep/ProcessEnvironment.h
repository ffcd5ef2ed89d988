// Where a test process with GNUstep keeps its files, and what the programs it starts inherit.
#pragma once

#include "tests/support/Process.h"
#include "tests/support/ScratchDirectory.h"

namespace velmora {

/// A directory for everything that GNUstep writes and for the sockets of its distributed objects,
/// told to GNUstep by environment variables. It would otherwise use the home of the user and
/// sockets of the whole system. Make it before the first message to an object.
class ProcessEnvironment {
 public:
  /// Throws std::exception.
  ProcessEnvironment();

 private:
  ScratchDirectory directory_;
};

/// For programs that are to share defaults and distributed notifications with this process.
process::Environment gnustepEnvironment();

}  // namespace velmora
