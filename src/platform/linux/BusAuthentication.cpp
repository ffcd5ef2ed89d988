#include "platform/linux/BusAuthentication.h"

#include "platform/linux/BusSocket.h"
#include "text/Hexadecimal.h"

#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

namespace {

/// The request, after the byte that the kernel passes the credentials with.
std::string request() {
  std::string line("\0AUTH EXTERNAL ", 15);
  for (const char digit : std::to_string(::geteuid())) {
    internal::appendHexByte(line, static_cast<std::uint8_t>(digit), internal::lowerCaseHexDigits);
  }
  return line.append("\r\n");
}

/// Whether the bus answers with the one line "OK <identifier of the bus>". It must send nothing
/// more, because it has to wait for our next line.
bool isAccepted(BusSocket& socket) {
  constexpr std::string_view end = "\r\n";
  std::array<char, 256> answer{};
  std::size_t length = 0;
  std::string_view line;
  while (line.find(end) == std::string_view::npos) {
    const std::size_t count =
        length < answer.size() ? socket.receive(answer.data() + length, answer.size() - length) : 0;
    if (count == 0) {
      return false;
    }
    length += count;
    line = {answer.data(), length};
  }
  return line.starts_with("OK ") && line.find(end) + end.size() == length;
}

}  // namespace

bool authenticate(BusSocket& socket) {
  return socket.send(request()) && isAccepted(socket) && socket.send("BEGIN\r\n");
}

}  // namespace velmora
