#include "tests/process/Buses.h"

#include <sys/socket.h>

#include <array>
#include <csignal>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace velmora::process {

namespace {

std::string configuration(const std::filesystem::path& socket,
                          const std::filesystem::path& services) {
  return "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
         " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
         "<busconfig>\n"
         "  <type>session</type>\n"
         "  <listen>unix:path=" +
         socket.string() +
         "</listen>\n"
         "  <servicedir>" +
         services.string() +
         "</servicedir>\n"
         "  <policy context=\"default\">\n"
         "    <allow user=\"*\"/>\n"
         "    <allow send_destination=\"*\"/>\n"
         "    <allow receive_sender=\"*\"/>\n"
         "    <allow own=\"*\"/>\n"
         "  </policy>\n"
         "</busconfig>\n";
}

/// The next line of a conversation, without its end.
std::optional<std::string> readLine(const FileDescriptor& source) {
  std::string line;
  char character = 0;
  while (::recv(source.get(), &character, 1, 0) == 1) {
    if (character == '\n') {
      return line;
    }
    line += character;
  }
  return std::nullopt;
}

std::string answerTo(std::string_view line) {
  if (line.starts_with("AUTH EXTERNAL")) {
    return "OK 0123456789abcdef0123456789abcdef\r\n";
  }
  return line.starts_with("NEGOTIATE_UNIX_FD") ? "AGREE_UNIX_FD\r\n" : "REJECTED EXTERNAL\r\n";
}

/// Plays the server's part of the D-Bus authentication. Whether the client has gone through it.
bool authenticate(const FileDescriptor& client) {
  char first = 0;
  ::recv(client.get(), &first, 1, 0);
  while (const std::optional<std::string> line = readLine(client)) {
    if (line->starts_with("BEGIN")) {
      return true;
    }
    const std::string answer = answerTo(*line);
    ::send(client.get(), answer.data(), answer.size(), MSG_NOSIGNAL);
  }
  return false;
}

void serve(const Listener& listener, Silence silence) {
  for (FileDescriptor client = listener.accept(); client.isOpen(); client = listener.accept()) {
    std::array<char, 4096> message{};
    if (authenticate(client) && silence == Silence::afterAuthentication) {
      while (::recv(client.get(), message.data(), message.size(), 0) > 0) {
      }
    } else {
      ::recv(client.get(), message.data(), message.size(), 0);
    }
  }
}

}  // namespace

PrivateBus::PrivateBus(const ScratchHome& home, const Services& services) {
  const std::filesystem::path serviceDirectory = home.path() / "services";
  std::filesystem::create_directory(serviceDirectory);
  for (const auto& [name, command] : services) {
    writeFile(serviceDirectory / (name + ".service"),
              "[D-BUS Service]\nName=" + name + "\nExec=" + command + "\n");
  }
  const std::filesystem::path configurationFile = home.path() / "bus.conf";
  writeFile(configurationFile, configuration(home.runtimeDirectory() / "bus", serviceDirectory));
  Environment environment = home.environment();
  // Services inherit it.
  for (const auto& [name, value] : helperEnvironment()) {
    environment[name] = value;
  }
  auto [ours, theirs] = makeSocketPair();
  // A test that is killed takes its bus with it.
  daemon_ = start({.arguments = {"setpriv", "--pdeathsig=TERM", "--", "dbus-daemon",
                                 "--config-file=" + configurationFile.string(), "--nofork",
                                 "--nopidfile", "--print-address=1"},
                   .environment = environment,
                   .input = {}},
                  theirs, home.path() / "bus.log");
  theirs = FileDescriptor::adopt(-1);
  const std::optional<std::string> address = readLine(ours);
  if (!address) {
    throw std::runtime_error("dbus-daemon has ended early");
  }
  address_ = *address;
}

PrivateBus::~PrivateBus() {
  ::kill(daemon_, SIGTERM);
  awaitEnd(daemon_);
}

SilentBus::SilentBus(const ScratchHome& home, Silence silence)
    : listener_(home.runtimeDirectory() / "silent") {
  if (silence != Silence::fromTheStart) {
    server_ = std::thread([this, silence] { serve(listener_, silence); });
  }
}

SilentBus::~SilentBus() {
  listener_.close();
  if (server_.joinable()) {
    server_.join();
  }
}

}  // namespace velmora::process
