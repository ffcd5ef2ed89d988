#include "tests/support/Listener.h"

#include "tests/support/HostileFiles.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <utility>

namespace velmora {
namespace {

using SocketCall = int (*)(int, const sockaddr*, socklen_t);

/// A socket that `call` has bound or connected to the path.
FileDescriptor socketAt(const std::string& path, SocketCall call) {
  FileDescriptor result = FileDescriptor::adopt(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  // A path that is too long is truncated, and nobody listens at the truncated path.
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  require(call(result.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0,
          path);
  return result;
}

}  // namespace

FileDescriptor connectTo(const std::string& path) { return socketAt(path, ::connect); }

Listener::Listener(std::string path) : path_(std::move(path)), socket_(socketAt(path_, ::bind)) {
  require(::listen(socket_.get(), SOMAXCONN) == 0, path_);
}

FileDescriptor Listener::accept() const {
  return FileDescriptor::adopt(::accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC));
}

void Listener::close() const { ::shutdown(socket_.get(), SHUT_RDWR); }

bool Listener::hasCaller() const {
  pollfd event{socket_.get(), POLLIN, 0};
  return ::poll(&event, 1, 0) > 0;
}

}  // namespace velmora
