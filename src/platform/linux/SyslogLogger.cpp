// A line in the system log is a datagram like that of the C library:
// "<11>Nov 21 20:34:15 velmora-finder-action[4711]: the line". The number is facility and severity
// (RFC 3164, section 4.1.1), and the time is local.
#include "platform/linux/SyslogLogger.h"

#include "platform/linux/LimitedWriting.h"
#include "platform/posix/FileDescriptor.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

#include <array>
#include <ctime>
#include <exception>
#include <utility>

namespace velmora {

namespace {

std::string priorityAndTime() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  ::localtime_r(&now, &parts);
  std::array<char, 32> text{};
  // "%b" is English, because no program here sets a locale.
  const std::size_t length = std::strftime(text.data(), text.size(), "%b %e %T ", &parts);
  std::string result("<");
  result.append(std::to_string(LOG_USER | LOG_ERR)).append(">").append(text.data(), length);
  return result;
}

void sendDatagram(const std::string& path, std::string_view bytes) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    return;
  }
  path.copy(address.sun_path, path.size());
  const FileDescriptor socket =
      FileDescriptor::adopt(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
    writeWithin(messageLimit, socket.get(), bytes);
  }
}

}  // namespace

SyslogLogger::SyslogLogger(std::string identifier, std::string socketPath)
    : identifier_(std::move(identifier)), socketPath_(std::move(socketPath)) {}

void SyslogLogger::log(std::string_view line) noexcept {
  try {
    const std::string process = std::to_string(::getpid());
    const std::string text = identifier_ + "[" + process + "]: " + std::string(line);
    sendDatagram(socketPath_, priorityAndTime() + text);
    writeWithin(messageLimit, STDERR_FILENO, text + "\n");
  } catch (const std::exception&) {
    // There is no memory for more words.
    writeWithin(messageLimit, STDERR_FILENO, line);
  }
}

}  // namespace velmora
