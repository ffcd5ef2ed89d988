// The three standard streams of a process. A process may be started without some of them, and may
// share them with others that have made them non-blocking.
#pragma once

#include "platform/posix/SystemCalls.h"

#include <poll.h>

#include <cerrno>
#include <concepts>
#include <cstddef>
#include <string>

namespace velmora {

/// Opens "/dev/null" for each missing standard stream, in the other direction: a use of the stream
/// fails (EBADF) as if it was still missing. Without it, the next opened file would get the
/// stream's number, and receive the output. To be called first in main.
void openMissingStandardStreams();

/// Reads all of standard input. Throws PlatformError: EFBIG for more than `maxLength` bytes.
[[nodiscard]] std::string readStandardInput(std::size_t maxLength);

/// Repeats a read or write while a signal interrupts it, and after each wait for a non-blocking
/// file to have `event` (POLLIN or POLLOUT). Returns the last result.
template <std::invocable Call>
auto waitingUntilReady(int descriptor, short event, Call systemCall) {
  auto result = retryingInterrupted(systemCall);
  while (result < 0 && errno == EAGAIN) {
    pollfd file{.fd = descriptor, .events = event, .revents = 0};
    static_cast<void>(::poll(&file, 1, -1));
    result = retryingInterrupted(systemCall);
  }
  return result;
}

}  // namespace velmora
