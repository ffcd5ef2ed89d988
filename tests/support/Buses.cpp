#include "tests/support/Buses.h"

#include "tests/support/HostileFiles.h"

#include <sys/socket.h>

#include <array>
#include <csignal>
#include <stdexcept>
#include <string_view>

namespace velmora {
namespace {

/// The next line without its end; std::nullopt when the other side has closed.
std::optional<std::string> readLine(const FileDescriptor& source) {
  std::string line;
  for (char character = 0; ::recv(source.get(), &character, 1, 0) == 1;) {
    if (character == '\n') {
      return line;
    }
    line.push_back(character);
  }
  return std::nullopt;
}

std::string configuration(const std::string& socket, const std::string& services) {
  return "<!DOCTYPE busconfig PUBLIC '-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN'"
         " 'http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd'>"
         "<busconfig><type>session</type>"
         "<listen>unix:path=" +
         socket + "</listen><servicedir>" + services +
         "</servicedir><policy context='default'><allow user='*'/>"
         "<allow send_destination='*'/><allow receive_sender='*'/><allow own='*'/>"
         "</policy></busconfig>";
}

std::string authenticationAnswer(std::string_view line) {
  if (line.starts_with("AUTH EXTERNAL")) {
    return "OK 0123456789abcdef0123456789abcdef\r\n";
  }
  return line.starts_with("NEGOTIATE_UNIX_FD") ? "AGREE_UNIX_FD\r\n" : "REJECTED EXTERNAL\r\n";
}

/// Performs the bus's part of the authentication.
void authenticate(const FileDescriptor& client) {
  // A NUL byte passes the client's credentials.
  char first = 0;
  ::recv(client.get(), &first, 1, 0);
  for (auto line = readLine(client); line && !line->starts_with("BEGIN"); line = readLine(client)) {
    const std::string answer = authenticationAnswer(*line);
    ::send(client.get(), answer.data(), answer.size(), MSG_NOSIGNAL);
  }
}

}  // namespace

PrivateBus::PrivateBus(const std::string& runtimeDirectory) {
  const std::string services = directory_.path("services");
  std::filesystem::create_directory(services);
  const std::string socket =
      (runtimeDirectory.empty() ? directory_.path() : runtimeDirectory) + "/bus";
  const std::string file = directory_.write("bus.conf", configuration(socket, services));
  auto [ours, theirs] = process::makeSocketPair();
  daemon_.emplace(std::vector<std::string>{VELMORA_TEST_DBUS_DAEMON, "--config-file=" + file,
                                           "--nofork", "--nopidfile", "--print-address=1"},
                  theirs, directory_.path("log"));
  theirs = FileDescriptor::adopt(-1);
  address_ = readLine(ours).value();
}

void PrivateBus::addService(const std::string& name, const std::string& command) const {
  directory_.write("services/" + name + ".service",
                   "[D-BUS Service]\nName=" + name + "\nExec=" + command + "\n");
}

void PrivateBus::freeze() const { daemon_->signal(SIGSTOP); }

void PrivateBus::thaw() const { daemon_->signal(SIGCONT); }

FilteringProxy::FilteringProxy(const std::string& busAddress,
                               const std::vector<std::string>& policy)
    : lifeline_(FileDescriptor::adopt(-1)) {
  auto [ours, theirs] = process::makeSocketPair();
  lifeline_ = std::move(ours);
  std::vector<std::string> arguments = {VELMORA_TEST_DBUS_PROXY, "--fd=1", busAddress,
                                        directory_.path("proxy"), "--filter"};
  arguments.insert(arguments.end(), policy.begin(), policy.end());
  proxy_.emplace(std::move(arguments), theirs);
  theirs = FileDescriptor::adopt(-1);
  // The proxy writes one byte when it listens.
  char ready = 0;
  if (::recv(lifeline_.get(), &ready, 1, 0) != 1) {
    throw std::runtime_error("xdg-dbus-proxy does not start");
  }
}

BrokenBus::BrokenBus(BusFault fault) {
  if (fault == BusFault::crashed) {
    makeSocket(directory_.path("bus"));
    return;
  }
  listener_.emplace(directory_.path("bus"));
  if (fault != BusFault::letsNobodyIn) {
    server_ = std::thread([this, fault] { serve(fault == BusFault::hangsUp); });
  }
}

BrokenBus::~BrokenBus() { receivedBytes(); }

const std::string& BrokenBus::receivedBytes() {
  if (server_.joinable()) {
    listener_->close();
    server_.join();
  }
  return receivedBytes_;
}

void BrokenBus::serve(bool hangsUp) {
  for (FileDescriptor client = listener_->accept(); client.isOpen(); client = listener_->accept()) {
    authenticate(client);
    std::array<char, 4096> message{};
    ssize_t count = 0;
    do {
      count = ::recv(client.get(), message.data(), message.size(), 0);
      receivedBytes_.append(message.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    } while (count > 0 && !hangsUp);
    client = FileDescriptor::adopt(-1);
  }
}

}  // namespace velmora
