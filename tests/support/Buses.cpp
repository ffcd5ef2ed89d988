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

/// Returns false when the client has left.
bool send(const FileDescriptor& client, std::string_view bytes) {
  return ::send(client.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL) > 0;
}

/// The answer to the client's first call: the name of its connection.
constexpr std::string_view answerToGreeting(
    "l\2\1\1\x09\0\0\0\1\0\0\0\x0f\0\0\0"
    "\5\1u\0\1\0\0\0\x8\1g\0\1s\0\0"
    "\4\0\0\0:1.7\0",
    41);

/// The signal a.b.c from the object /a.
constexpr std::string_view signal(
    "l\4\1\1\0\0\0\0\1\0\0\0\x2a\0\0\0"
    "\1\1o\0\2\0\0\0/a\0\0\0\0\0\0\2\1s\0\3\0\0\0a.b\0\0\0\0\0\3\1s\0\1\0\0\0c\0\0\0\0\0\0\0",
    64);

/// The beginning of an answer to the client's second call, with 112 megabytes of values.
constexpr std::string_view hugeAnswer(
    "l\2\1\1\0\0\0\7\1\0\0\0\x10\0\0\0"
    "\5\1u\0\2\0\0\0\x8\1g\0\2av\0",
    32);

/// Sends without end.
void send(const FileDescriptor& client, BusManner manner) {
  std::string bytes(64UL * 1024, 'x');
  if (manner == BusManner::sendsHugeAnswer) {
    send(client, hugeAnswer);
  }
  if (manner == BusManner::sendsSignals) {
    for (std::size_t offset = 0; offset < bytes.size(); offset += signal.size()) {
      signal.copy(bytes.data() + offset, signal.size());
    }
  }
  while (send(client, bytes)) {
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

BrokenBus::BrokenBus(BusStage stage, BusManner manner) {
  if (stage == BusStage::ended) {
    makeSocket(directory_.path("bus"));
    return;
  }
  listener_.emplace(directory_.path("bus"));
  // A client is connected before it is accepted.
  if (stage != BusStage::connected || manner != BusManner::hangs) {
    server_ = std::thread([this, stage, manner] { serve(stage, manner); });
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

void BrokenBus::serve(BusStage stage, BusManner manner) {
  for (FileDescriptor client = listener_->accept(); client.isOpen(); client = listener_->accept()) {
    serveClient(client, stage, manner);
    // Closed before the next one is awaited.
    client = FileDescriptor::adopt(-1);
  }
}

void BrokenBus::serveClient(const FileDescriptor& client, BusStage stage, BusManner manner) {
  if (stage > BusStage::connected && !readLine(client)) {
    return;
  }
  if (stage > BusStage::authenticating) {
    send(client, "OK 0123456789abcdef0123456789abcdef\r\n");
    if (!readLine(client) || !receive(client)) {
      return;
    }
  }
  if (stage > BusStage::greeting && (!send(client, answerToGreeting) || !receive(client))) {
    return;
  }
  if (manner == BusManner::hangs) {
    while (receive(client)) {
    }
  } else if (manner != BusManner::closes) {
    send(client, manner);
  }
}

bool BrokenBus::receive(const FileDescriptor& client) {
  std::array<char, 4096> bytes{};
  const ssize_t count = ::recv(client.get(), bytes.data(), bytes.size(), 0);
  receivedBytes_.append(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return count > 0;
}

}  // namespace velmora
