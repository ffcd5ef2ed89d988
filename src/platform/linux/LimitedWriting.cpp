// A pipe, a terminal or a socket makes its writer wait while nobody reads. O_NONBLOCK would prevent
// that, but it belongs to the open file, which the parent process and its other children share. So
// each kind of file is written in another way:
//
// 1. A socket takes MSG_DONTWAIT for a single call.
// 2. A pipe or a terminal is opened once more through /proc, and O_NONBLOCK is set for this open
//    file only. If that is refused, as for a terminal of another user, the shared one is used. In
//    this case poll() comes before each write, and a writable pipe takes PIPE_BUF bytes at once.
// 3. Any other file, such as a regular one, has no reader to wait for. It is not opened once more,
//    because the new open file would begin at its first byte.
#include "platform/linux/LimitedWriting.h"

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/SystemCalls.h"

#include <climits>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstddef>

namespace velmora {

namespace {

using Clock = std::chrono::steady_clock;

FileDescriptor openOnceMore(int descriptor) {
  constexpr std::string_view directory = "/proc/self/fd/";
  // The zeros after the digits end the path.
  char path[directory.size() + 16] = {};
  std::to_chars(path + directory.copy(path, directory.size()), path + sizeof path - 1, descriptor);
  return FileDescriptor::adopt(retryingInterrupted(
      [&] { return ::open(path, O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); }));
}

}  // namespace

void writeWithin(std::chrono::milliseconds limit, int descriptor, std::string_view bytes) noexcept {
  const Clock::time_point deadline = Clock::now() + limit;
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) {
    return;
  }
  const bool isSocket = S_ISSOCK(status.st_mode);
  const FileDescriptor again = S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode)
                                   ? openOnceMore(descriptor)
                                   : FileDescriptor::adopt(-1);
  const int file = again.isOpen() ? again.get() : descriptor;
  while (!bytes.empty() && awaitEvents(file, POLLOUT, deadline)) {
    const std::size_t length = std::min<std::size_t>(bytes.size(), PIPE_BUF);
    const ssize_t count =
        isSocket ? ::send(file, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL)
                 : ::write(file, bytes.data(), length);
    if (count < 0 && errno != EAGAIN && errno != EINTR) {
      return;
    }
    bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  }
}

}  // namespace velmora
