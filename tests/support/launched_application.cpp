// An application that a launcher or a bus starts. It reports its start, and runs until nobody
// listens.
//
//   launched_application SOCKET NAME [ARGUMENT]...
//
// With a NAME other than "-", it owns this name on the bus and reports the calls that waited for
// it.

#include "tests/support/BusPeer.h"
#include "tests/support/Listener.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <string_view>

extern "C" char** environ;

namespace {

std::string field(const std::string& name, const std::string& value) {
  return name + "=" + value + '\0';
}

std::string describeProcess() {
  struct sigaction broken {};
  ::sigaction(SIGPIPE, nullptr, &broken);
  std::string result = field("process", std::to_string(::getpid())) +
                       field("session", std::to_string(::getsid(0))) +
                       field("directory", std::filesystem::current_path()) +
                       field("ignoresBrokenPipes", broken.sa_handler == SIG_IGN ? "yes" : "no");
  for (const char* stream : {"0", "1", "2"}) {
    result +=
        field("stream", std::filesystem::read_symlink(std::string("/proc/self/fd/") + stream));
  }
  for (char** variable = environ; *variable != nullptr; ++variable) {
    result += field("environment", *variable);
  }
  return result;
}

void run(const std::string& socket, const std::string& name, std::span<char*> arguments) {
  std::string report = describeProcess();
  for (const char* argument : arguments) {
    report += field("argument", argument);
  }
  std::optional<velmora::BusPeer> peer;
  if (name != "-") {
    peer.emplace(::getenv("DBUS_SESSION_BUS_ADDRESS"));
    peer->own(name);
    // Calls that waited for the name arrive before the answer to this call.
    static_cast<void>(peer->ownerOf(name));
    for (const velmora::BusMessage& call : peer->received(0)) {
      report +=
          field("call", call.path + " " + call.interface + "." + call.member + call.arguments);
    }
  }
  report += '\0';
  const velmora::FileDescriptor connection = velmora::connectTo(socket);
  ::send(connection.get(), report.data(), report.size(), MSG_NOSIGNAL);
  std::array<char, 1> end{};
  ::recv(connection.get(), end.data(), end.size(), 0);
}

}  // namespace

int main(int count, char* words[]) {
  try {
    const std::span arguments(words, static_cast<std::size_t>(count));
    if (count < 3) {
      throw std::invalid_argument("what to do?");
    }
    run(arguments[1], arguments[2], arguments.subspan(3));
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    std::cerr << "launched_application: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
