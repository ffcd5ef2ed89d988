#include "tests/process/Peer.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace velmora::process {

Peer::Peer(const std::string& busAddress, const std::vector<std::string>& options)
    : channel_(FileDescriptor::adopt(-1)) {
  auto [ours, theirs] = makeSocketPair();
  channel_ = Channel(std::move(ours));
  Command command{.arguments = {VELMORA_TEST_BUS_PEER, "record"},
                  .environment = helperEnvironment(),
                  .input = {}};
  command.arguments.insert(command.arguments.end(), options.begin(), options.end());
  command.environment["DBUS_SESSION_BUS_ADDRESS"] = busAddress;
  process_ = start(command, theirs);
  theirs = FileDescriptor::adopt(-1);
  early_ = recordsUntil("ready");
}

Peer::Peer(const Listener& listener) : channel_(listener.accept()), early_(recordsUntil("ready")) {}

Peer::~Peer() {
  channel_ = Channel(FileDescriptor::adopt(-1));
  if (process_) {
    awaitEnd(*process_);
  }
}

std::vector<Record> Peer::recordsUntil(std::string_view answer) {
  std::vector<Record> result;
  for (Record record = channel_.read(); record.values(answer).empty(); record = channel_.read()) {
    result.push_back(std::move(record));
  }
  return result;
}

std::vector<Record> Peer::recordsUntilGone(pid_t process) {
  Record request;
  request.add("gone", std::to_string(process));
  channel_.write(request);
  std::vector<Record> result = std::exchange(early_, {});
  std::ranges::move(recordsUntil("gone"), std::back_inserter(result));
  return result;
}

LaunchedApplication::LaunchedApplication(const Listener& listener) {
  channel_.emplace_back(listener.accept());
  record_ = channel_.front().read();
}

LaunchedApplication::~LaunchedApplication() {
  channel_.clear();
  awaitEnd(process());
}

pid_t LaunchedApplication::process() const { return std::stoi(record_.value("process")); }

bool LaunchedApplication::hasVariable(const std::string& assignment) const {
  return std::ranges::count(record_.values("environment"), assignment) == 1;
}

bool LaunchedApplication::hasVariableNamed(const std::string& name) const {
  return std::ranges::any_of(record_.values("environment"), [&](const std::string& assignment) {
    return assignment.starts_with(name + "=");
  });
}

std::string helperCommand(const std::vector<std::string>& arguments) {
  std::string result = "\"" VELMORA_TEST_BUS_PEER "\"";
  for (const std::string& argument : arguments) {
    result += " " + argument;
  }
  return result;
}

}  // namespace velmora::process
