#include "tests/platform/linux/Buses.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace velmora {
namespace {

void require(bool succeeded, const char* what) {
  if (!succeeded) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

struct Pipe {
  FileDescriptor readEnd;
  FileDescriptor writeEnd;
};

Pipe makePipe() {
  std::array<int, 2> ends{};
  require(pipe2(ends.data(), O_CLOEXEC) == 0, "pipe");
  return {FileDescriptor::adopt(ends[0]), FileDescriptor::adopt(ends[1])};
}

/// The next line without its end; none when the other side has closed.
std::optional<std::string> readLine(const FileDescriptor& source) {
  std::string line;
  for (char character = 0; read(source.get(), &character, 1) == 1;) {
    if (character == '\n') {
      return line;
    }
    line.push_back(character);
  }
  return std::nullopt;
}

std::string configuration(const ScratchDirectory& directory) {
  return "<!DOCTYPE busconfig PUBLIC '-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN'"
         " 'http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd'>"
         "<busconfig><type>session</type>"
         "<listen>unix:path=" +
         directory.path("bus") + "</listen><servicedir>" + directory.path("services") +
         "</servicedir><policy context='default'><allow send_destination='*'/>"
         "<allow receive_sender='*'/>"
         "<allow own='*'/></policy></busconfig>";
}

/// Starts a bus and waits until it listens.
ChildProcess startBus(const ScratchDirectory& directory) {
  std::filesystem::create_directory(directory.path("services"));
  const std::string file = directory.write("bus.conf", configuration(directory));
  Pipe addresses = makePipe();
  ChildProcess daemon({VELMORA_TEST_DBUS_DAEMON, "--config-file=" + file, "--nofork", "--nopidfile",
                       "--print-address=" + std::to_string(addresses.writeEnd.get())},
                      addresses.writeEnd);
  addresses.writeEnd = FileDescriptor::adopt(-1);
  if (!readLine(addresses.readEnd)) {
    throw std::runtime_error("dbus-daemon does not start");
  }
  return daemon;
}

std::string authenticationAnswer(std::string_view line) {
  if (line.starts_with("AUTH EXTERNAL")) {
    return "OK 0123456789abcdef0123456789abcdef\r\n";
  }
  return line.starts_with("AUTH") ? "REJECTED EXTERNAL\r\n" : "ERROR\r\n";
}

void authenticate(const FileDescriptor& client) {
  for (auto line = readLine(client); line && !line->starts_with("BEGIN"); line = readLine(client)) {
    // The first line begins with the NUL that passes the client's credentials.
    const std::string_view command = std::string_view(*line).substr(line->front() == '\0' ? 1 : 0);
    const std::string answer = authenticationAnswer(command);
    require(send(client.get(), answer.data(), answer.size(), MSG_NOSIGNAL) > 0, "send");
  }
}

std::string readToEnd(const FileDescriptor& source) {
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t count = 0; (count = read(source.get(), buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return text;
}

sockaddr_un socketAddress(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof(address.sun_path)) {
    throw std::length_error(path);
  }
  path.copy(address.sun_path, path.size());
  return address;
}

}  // namespace

ChildProcess::ChildProcess(std::vector<std::string> arguments, const FileDescriptor& descriptor) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) {
    pointers.push_back(argument.data());
  }
  pointers.push_back(nullptr);
  process_ = fork();
  require(process_ >= 0, "fork");
  if (process_ > 0) {
    return;
  }
  // The child may only make system calls: other threads' locks stay locked in it for ever. It dies
  // with the test, also when the test runner kills that.
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  fcntl(descriptor.get(), F_SETFD, 0);
  execvp(pointers.front(), pointers.data());
  _exit(127);
}

void ChildProcess::signal(int number) const { require(kill(process_, number) == 0, "kill"); }

void ChildProcess::end() {
  if (const pid_t process = std::exchange(process_, 0)) {
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
  }
}

PrivateBus::PrivateBus() : daemon_(startBus(directory_)) {}

void PrivateBus::addService(const std::string& name, const std::string& command) const {
  directory_.write("services/" + name + ".service",
                   "[D-BUS Service]\nName=" + name + "\nExec=" + command + "\n");
}

void PrivateBus::freeze() const { daemon_.signal(SIGSTOP); }

void PrivateBus::thaw() const { daemon_.signal(SIGCONT); }

FilteringProxy::FilteringProxy(const std::string& busAddress,
                               const std::vector<std::string>& policy)
    : lifeline_(FileDescriptor::adopt(-1)), proxy_(startProxy(busAddress, policy)) {}

ChildProcess FilteringProxy::startProxy(const std::string& busAddress,
                                        const std::vector<std::string>& policy) {
  std::array<int, 2> ends{};
  require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0, "socketpair");
  lifeline_ = FileDescriptor::adopt(ends[0]);
  FileDescriptor proxysEnd = FileDescriptor::adopt(ends[1]);
  std::vector<std::string> arguments = {VELMORA_TEST_DBUS_PROXY,
                                        "--fd=" + std::to_string(proxysEnd.get()), busAddress,
                                        directory_.path("proxy"), "--filter"};
  arguments.insert(arguments.end(), policy.begin(), policy.end());
  ChildProcess proxy(std::move(arguments), proxysEnd);
  proxysEnd = FileDescriptor::adopt(-1);
  // It writes one byte when it listens.
  char ready = 0;
  if (read(lifeline_.get(), &ready, 1) != 1) {
    throw std::runtime_error("xdg-dbus-proxy does not start");
  }
  return proxy;
}

DeafBus::DeafBus() : listener_(FileDescriptor::adopt(socket(AF_UNIX, SOCK_STREAM, 0))) {
  const sockaddr_un address = socketAddress(path());
  require(bind(listener_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0,
          "bind");
  require(listen(listener_.get(), SOMAXCONN) == 0, "listen");
}

MuteBus::MuteBus()
    : server_([this] {
        const FileDescriptor client =
            FileDescriptor::adopt(accept(socket_.listener().get(), nullptr, nullptr));
        if (client.isOpen()) {
          authenticate(client);
          lastWords_ = readToEnd(client);
        }
      }) {}

MuteBus::~MuteBus() { lastWords(); }

const std::string& MuteBus::lastWords() {
  if (server_.joinable()) {
    // Ends the waiting for a client that never came.
    shutdown(socket_.listener().get(), SHUT_RDWR);
    server_.join();
  }
  return lastWords_;
}

}  // namespace velmora
