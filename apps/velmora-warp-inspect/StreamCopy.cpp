#include "StreamCopy.h"

#include "common/Output.h"
#include "common/StandardStreams.h"
#include "platform/PlatformError.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

namespace velmora::inspect {

namespace {

bool isPipe(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

FileDescriptor checked(int descriptor) {
  FileDescriptor file = FileDescriptor::adopt(descriptor);
  if (!file.isOpen()) {
    throw posixError(errno);
  }
  return file;
}

}  // namespace

StreamCopy::StreamCopy(int stream, std::size_t maxLength)
    : file_(checked(::memfd_create("velmora-warp-inspect", MFD_CLOEXEC))) {
  std::vector<char> piece(std::size_t{256} << 10);
  for (std::size_t length = 0;;) {
    // One additional byte detects a longer stream.
    const std::size_t size = std::min(piece.size(), maxLength - length + 1);
    const ssize_t count =
        waitingUntilReady(stream, POLLIN, [&] { return ::read(stream, piece.data(), size); });
    if (count < 0) {
      throw posixError(errno);
    }
    if (count == 0) {
      return;
    }
    length += static_cast<std::size_t>(count);
    if (length > maxLength) {
      throw posixError(EFBIG);
    }
    Output(file_.get()).write({piece.data(), static_cast<std::size_t>(count)});
  }
}

std::string StreamCopy::path() const { return "/proc/self/fd/" + std::to_string(file_.get()); }

std::optional<StreamCopy> copyOfStream(const std::string& operand, std::size_t maxLength) {
  if (operand == "-" || operand == "/dev/stdin") {
    return StreamCopy(STDIN_FILENO, maxLength);
  }
  if (!isPipe(operand)) {
    return std::nullopt;
  }
  const FileDescriptor pipe =
      checked(retryingInterrupted([&] { return ::open(operand.c_str(), O_RDONLY | O_CLOEXEC); }));
  return StreamCopy(pipe.get(), maxLength);
}

}  // namespace velmora::inspect
