#include "platform/linux/BusSocket.h"

#include "platform/posix/SystemCalls.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace velmora {

BusSocket::BusSocket(FileDescriptor socket, Deadline deadline)
    : socket_(std::move(socket)), deadline_(deadline) {}

std::optional<BusSocket> BusSocket::connect(const std::string& name, Deadline deadline) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  // The length ends an abstract name, and a NUL ends a path.
  if (name.size() >= sizeof address.sun_path) {
    return std::nullopt;
  }
  name.copy(address.sun_path, name.size());
  const std::size_t length = offsetof(sockaddr_un, sun_path) + name.size();
  FileDescriptor socket = FileDescriptor::adopt(
      ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, /*protocol=*/0));
  if (!socket.isOpen() || ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address),
                                    static_cast<socklen_t>(length)) != 0) {
    return std::nullopt;
  }
  return BusSocket(std::move(socket), deadline);
}

bool BusSocket::send(std::string_view bytes) {
  while (!bytes.empty()) {
    if (!awaitEvents(socket_.get(), POLLOUT, deadline_)) {
      return false;
    }
    const ssize_t count = retryingInterrupted(
        [&] { return ::send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL); });
    if (count < 0) {
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

std::size_t BusSocket::receive(char* room, std::size_t size) {
  if (!awaitEvents(socket_.get(), POLLIN, deadline_)) {
    return 0;
  }
  const ssize_t count =
      retryingInterrupted([&] { return ::recv(socket_.get(), room, size, /*flags=*/0); });
  return static_cast<std::size_t>(std::max<ssize_t>(count, 0));
}

}  // namespace velmora
