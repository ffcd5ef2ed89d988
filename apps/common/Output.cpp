#include "common/Output.h"

#include "common/StandardStreams.h"
#include "platform/PlatformError.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace velmora {

OutputError::OutputError(int code) : std::runtime_error(posixError(code).what()), code_(code) {}

void Output::write(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t count = waitingUntilReady(fileDescriptor_, POLLOUT, [&] {
      return ::write(fileDescriptor_, bytes.data(), bytes.size());
    });
    if (count < 0) {
      throw OutputError(errno);
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace velmora
