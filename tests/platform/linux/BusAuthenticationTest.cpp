#include "platform/linux/BusAuthentication.h"
#include "platform/linux/BusSocket.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/Listener.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {
namespace {

using namespace std::literals;

/// All bytes until the other side closes.
std::string receiveAll(const FileDescriptor& connection) {
  std::string bytes;
  for (char byte = 0; ::recv(connection.get(), &byte, 1, 0) == 1;) {
    bytes += byte;
  }
  return bytes;
}

/// The decimal digits of the user, each as two hexadecimal ones.
std::string userInHexadecimal() {
  std::string result;
  for (const char digit : std::to_string(::geteuid())) {
    result += std::string("3") + digit;
  }
  return result;
}

TEST(BusAuthentication, needsOneShortLine) {
  const std::string accepted = "OK 0123456789abcdef0123456789abcdef\r\n";
  const struct {
    std::string answer;
    bool isAccepted;
  } rows[] = {
      {accepted, true},
      {"OK " + std::string(251, 'x') + "\r\n", true},
      {"OK " + std::string(252, 'x') + "\r\n", false},
      {std::string(1000, 'x'), false},
      {accepted + "more", false},
      {"REJECTED EXTERNAL\r\n", false},
      {"DATA\r\n", false},
      {"ERROR\r\n", false},
      {"OK\r\n", false},
      {"\r\n", false},
      {"OK 0123", false},
      {"", false},
  };
  const ScratchDirectory directory;
  const Listener bus(directory.path("bus"));
  for (const auto& row : rows) {
    SCOPED_TRACE(row.answer);
    std::optional<BusSocket> client =
        BusSocket::connect(bus.path(), std::chrono::steady_clock::now() + 60s);
    ASSERT_TRUE(client);
    const FileDescriptor server = bus.accept();
    ::send(server.get(), row.answer.data(), row.answer.size(), MSG_NOSIGNAL);
    ::shutdown(server.get(), SHUT_WR);
    EXPECT_EQ(authenticate(*client), row.isAccepted);
    client.reset();
    EXPECT_EQ(receiveAll(server), "\0AUTH EXTERNAL "s + userInHexadecimal() + "\r\n" +
                                      (row.isAccepted ? "BEGIN\r\n" : ""));
  }
}

/// A socket in the abstract namespace on which clients can connect.
FileDescriptor listenAt(std::string_view abstractName) {
  FileDescriptor socket = FileDescriptor::adopt(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  abstractName.copy(address.sun_path, abstractName.size());
  const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + abstractName.size());
  require(::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), length) == 0, "bind");
  require(::listen(socket.get(), 1) == 0, "listen");
  return socket;
}

TEST(BusSockets, connectToPathsAndAbstractNames) {
  const auto deadline = std::chrono::steady_clock::now() + 60s;
  const ScratchDirectory directory;
  const Listener listener(directory.path("bus"));
  EXPECT_TRUE(BusSocket::connect(listener.path(), deadline));
  const std::string abstractName = "\0velmora-test-"s + std::to_string(::getpid());
  const FileDescriptor abstractListener = listenAt(abstractName);
  EXPECT_TRUE(BusSocket::connect(abstractName, deadline));
  directory.write("file", "");
  for (const std::string& name : {directory.path("missing"), directory.path("file"), std::string(),
                                  "\0"s + listener.path(), "/" + std::string(200, 'x')}) {
    EXPECT_FALSE(BusSocket::connect(name, deadline)) << name;
  }
}

TEST(BusSockets, endTheirWaitsAtTheDeadline) {
  const ScratchDirectory directory;
  const Listener listener(directory.path("bus"));
  const auto begin = std::chrono::steady_clock::now();
  std::optional<BusSocket> socket = BusSocket::connect(listener.path(), begin + 50ms);
  ASSERT_TRUE(socket);
  char room = 0;
  EXPECT_EQ(socket->receive(&room, 1), 0U);
  EXPECT_GE(std::chrono::steady_clock::now(), begin + 50ms);
  // Nobody reads.
  std::optional<BusSocket> full =
      BusSocket::connect(listener.path(), std::chrono::steady_clock::now() + 50ms);
  EXPECT_FALSE(full->send(std::string(64UL << 20, 'x')));
  EXPECT_FALSE(full->send("x"));
}

}  // namespace
}  // namespace velmora
