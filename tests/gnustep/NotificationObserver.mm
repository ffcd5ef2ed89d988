#include "tests/gnustep/NotificationObserver.h"

#include "tests/gnustep/NotificationProtocol.h"
#include "tests/gnustep/ProcessEnvironment.h"
#include "tests/gnustep/Strings.h"
#include "tests/support/Process.h"

#import <Foundation/Foundation.h>
#include <unistd.h>

#include <csignal>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace velmora {

namespace {

/// The next line without its end; std::nullopt at the end of the stream.
std::optional<std::string> readLine(const FileDescriptor& socket) {
  std::string line;
  char character = 0;
  while (::read(socket.get(), &character, 1) == 1) {
    if (character == '\n') {
      return line;
    }
    line += character;
  }
  return std::nullopt;
}

/// Starts a helper that does not outlive this process. Returns the process and a socket to it.
std::pair<pid_t, FileDescriptor> startHelper(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"setpriv", "--pdeathsig", "KILL", "--"});
  auto [ours, theirs] = process::makeSocketPair();
  const pid_t helper = process::start(
      {.arguments = std::move(arguments), .environment = gnustepEnvironment(), .input = {}},
      theirs);
  return {helper, std::move(ours)};
}

void endHelper(pid_t helper) {
  ::kill(helper, SIGKILL);
  process::awaitEnd(helper);
}

class NotificationDaemon {
 public:
  NotificationDaemon() {
    auto [daemon, socket] = startHelper({VELMORA_TEST_GDNC, "--no-fork"});
    process_ = daemon;
    // The daemon closes its standard input and output after it is reachable.
    readLine(socket);
  }
  NotificationDaemon(const NotificationDaemon&) = delete;
  NotificationDaemon& operator=(const NotificationDaemon&) = delete;
  ~NotificationDaemon() { endHelper(process_); }

 private:
  pid_t process_;
};

/// Starts one daemon per process, because the notification center stays connected to the first one.
void startDaemon() { static const NotificationDaemon daemon; }

void postFence(const std::string& identifier) {
  @autoreleasepool {
    [[NSDistributedNotificationCenter defaultCenter]
        postNotificationName:nsString(fenceNotification)
                      object:nsString(identifier)
                    userInfo:nil
          deliverImmediately:YES];
  }
}

std::optional<std::string> optionalText(const std::string& field) {
  return field.empty() ? std::nullopt : std::optional(field.substr(1));
}

ReceivedNotification notificationOf(const std::string& line) {
  std::istringstream fields(line);
  std::string kind;
  std::string name;
  std::string object;
  std::string userInfo;
  std::getline(fields, kind, '\t');
  std::getline(fields, name, '\t');
  std::getline(fields, object, '\t');
  std::getline(fields, userInfo, '\t');
  return {.name = name, .object = optionalText(object), .userInfo = optionalText(userInfo)};
}

}  // namespace

NotificationObserver::NotificationObserver(const std::vector<std::string>& names)
    : socket_(FileDescriptor::adopt(-1)) {
  startDaemon();
  std::vector<std::string> arguments = {VELMORA_TEST_NOTIFICATION_OBSERVER};
  arguments.insert(arguments.end(), names.begin(), names.end());
  auto [observer, socket] = startHelper(std::move(arguments));
  process_ = observer;
  socket_ = std::move(socket);
  linesUntil(std::string(observerReady));
}

NotificationObserver::~NotificationObserver() { endHelper(process_); }

std::vector<ReceivedNotification> NotificationObserver::received() {
  ++fences_;
  const std::string fence = std::to_string(process_) + "." + std::to_string(fences_);
  postFence(fence);
  std::vector<ReceivedNotification> notifications;
  for (const std::string& line : linesUntil(std::string(observerFence) + '\t' + fence)) {
    // The lines of other observers' fences are skipped.
    if (line.starts_with(observerReceived)) {
      notifications.push_back(notificationOf(line));
    }
  }
  return notifications;
}

std::vector<std::string> NotificationObserver::linesUntil(const std::string& end) {
  std::vector<std::string> lines;
  while (const std::optional<std::string> line = readLine(socket_)) {
    if (*line == end) {
      return lines;
    }
    lines.push_back(*line);
  }
  throw std::runtime_error("the observer has ended");
}

}  // namespace velmora
