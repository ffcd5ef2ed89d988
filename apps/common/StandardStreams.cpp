#include "common/StandardStreams.h"

#include "platform/PlatformError.h"
#include "platform/posix/SystemCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace velmora {

void openMissingStandardStreams() {
  while (true) {
    const int descriptor = ::open("/dev/null", O_RDWR);
    if (descriptor < 0) {
      return;
    }
    if (descriptor > STDERR_FILENO) {
      ::close(descriptor);
      return;
    }
  }
}

std::string readStandardInput() {
  std::string bytes;
  char piece[16 * 1024];
  while (true) {
    const ssize_t count =
        retryingInterrupted([&] { return ::read(STDIN_FILENO, piece, sizeof piece); });
    if (count < 0) {
      throw posixError(errno);
    }
    if (count == 0) {
      return bytes;
    }
    bytes.append(piece, static_cast<std::size_t>(count));
  }
}

}  // namespace velmora
