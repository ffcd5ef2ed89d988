#include "common/StandardStreams.h"

#include "platform/posix/ReadAll.h"

#include <fcntl.h>
#include <unistd.h>

namespace velmora {

void openMissingStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(stream, F_GETFD) < 0) {
      // Gets the lowest free number, which is the stream's.
      ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
  }
}

std::string readStandardInput(std::size_t maxLength) {
  return readAll(0, maxLength, [](char* room, std::size_t size) {
    return waitingUntilReady(STDIN_FILENO, POLLIN,
                             [&] { return ::read(STDIN_FILENO, room, size); });
  });
}

}  // namespace velmora
