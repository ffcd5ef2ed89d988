#include "tests/support/Records.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <system_error>

namespace velmora::process {

namespace {

void require(bool succeeded, const std::string& what) {
  if (!succeeded) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

sockaddr_un addressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof(address.sun_path)) {
    throw std::length_error("too long for a socket: " + path);
  }
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  return address;
}

FileDescriptor makeSocket() {
  FileDescriptor result = FileDescriptor::adopt(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  require(result.isOpen(), "socket");
  return result;
}

const sockaddr* generic(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

FileDescriptor listenOn(const std::string& path) {
  FileDescriptor result = makeSocket();
  const sockaddr_un address = addressOf(path);
  require(::bind(result.get(), generic(address), sizeof address) == 0, path);
  require(::listen(result.get(), SOMAXCONN) == 0, path);
  return result;
}

}  // namespace

void Record::add(std::string_view name, std::string_view value) {
  fields.emplace_back(name, value);
}

std::string Record::value(std::string_view name) const {
  const auto found = std::ranges::find(fields, name, [](const auto& field) { return field.first; });
  return found == fields.end() ? std::string() : found->second;
}

std::vector<std::string> Record::values(std::string_view name) const {
  std::vector<std::string> result;
  for (const auto& [fieldName, value] : fields) {
    if (fieldName == name) {
      result.push_back(value);
    }
  }
  return result;
}

void Channel::write(const Record& record) {
  std::string bytes;
  for (const auto& [name, value] : record.fields) {
    bytes += name + "=" + value + '\0';
  }
  bytes += '\0';
  std::string_view rest = bytes;
  while (!rest.empty()) {
    const ssize_t count = ::send(socket_.get(), rest.data(), rest.size(), MSG_NOSIGNAL);
    require(count >= 0 || errno == EINTR, "send");
    rest.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  }
}

std::string Channel::readField() {
  std::size_t end = received_.find('\0');
  while (end == std::string::npos) {
    std::array<char, 65536> buffer{};
    const ssize_t count = ::recv(socket_.get(), buffer.data(), buffer.size(), 0);
    require(count >= 0 || errno == EINTR, "recv");
    if (count == 0) {
      throw std::runtime_error("the other process has closed its end");
    }
    received_.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    end = received_.find('\0');
  }
  std::string field = received_.substr(0, end);
  received_.erase(0, end + 1);
  return field;
}

Record Channel::read() {
  Record record;
  for (std::string field = readField(); !field.empty(); field = readField()) {
    const std::size_t separator = field.find('=');
    record.add(field.substr(0, separator), field.substr(separator + 1));
  }
  return record;
}

void Channel::awaitEnd() {
  std::array<char, 4096> ignored{};
  while (::recv(socket_.get(), ignored.data(), ignored.size(), 0) > 0) {
  }
}

FileDescriptor connectTo(const std::string& path) {
  FileDescriptor result = makeSocket();
  const sockaddr_un address = addressOf(path);
  require(::connect(result.get(), generic(address), sizeof address) == 0, path);
  return result;
}

Listener::Listener(std::string path) : path_(std::move(path)), socket_(listenOn(path_)) {}

FileDescriptor Listener::accept() const {
  return FileDescriptor::adopt(::accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC));
}

void Listener::close() const { ::shutdown(socket_.get(), SHUT_RDWR); }

bool Listener::hasCaller() const {
  pollfd event{socket_.get(), POLLIN, 0};
  return ::poll(&event, 1, 0) > 0;
}

}  // namespace velmora::process
