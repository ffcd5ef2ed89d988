#include "tests/support/Process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

namespace velmora::process {

namespace {

std::system_error systemError(const std::string& what) {
  return std::system_error(errno, std::generic_category(), what);
}

void require(bool succeeded, const char* what) {
  if (!succeeded) {
    throw systemError(what);
  }
}

/// The two ends of a pipe or a similar channel: the test's end and the program's end.
struct Connection {
  FileDescriptor ours = FileDescriptor::adopt(-1);
  FileDescriptor theirs = FileDescriptor::adopt(-1);
};

void makeNonBlocking(const FileDescriptor& descriptor) {
  require(::fcntl(descriptor.get(), F_SETFL, O_NONBLOCK) == 0, "fcntl");
}

std::array<FileDescriptor, 2> makePipe() {
  std::array<int, 2> ends{};
  require(::pipe2(ends.data(), O_CLOEXEC) == 0, "pipe");
  return {FileDescriptor::adopt(ends[0]), FileDescriptor::adopt(ends[1])};
}

Connection outputPipe() {
  auto [readEnd, writeEnd] = makePipe();
  makeNonBlocking(readEnd);
  return {std::move(readEnd), std::move(writeEnd)};
}

Connection inputPipe() {
  auto [readEnd, writeEnd] = makePipe();
  makeNonBlocking(writeEnd);
  return {std::move(writeEnd), std::move(readEnd)};
}

Connection emptyInput() {
  return {FileDescriptor::adopt(-1),
          FileDescriptor::adopt(::open("/dev/null", O_RDONLY | O_CLOEXEC))};
}

/// A terminal that passes all bytes on unchanged.
Connection terminal() {
  FileDescriptor master = FileDescriptor::adopt(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
  require(master.isOpen() && ::grantpt(master.get()) == 0 && ::unlockpt(master.get()) == 0,
          "terminal");
  std::array<char, 64> name{};
  require(::ptsname_r(master.get(), name.data(), name.size()) == 0, "ptsname_r");
  FileDescriptor slave = FileDescriptor::adopt(::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios mode{};
  require(slave.isOpen() && ::tcgetattr(slave.get(), &mode) == 0, "tcgetattr");
  ::cfmakeraw(&mode);
  require(::tcsetattr(slave.get(), TCSANOW, &mode) == 0, "tcsetattr");
  makeNonBlocking(master);
  return {std::move(master), std::move(slave)};
}

Connection stuckPipe() {
  auto [readEnd, writeEnd] = makePipe();
  makeNonBlocking(writeEnd);
  while (::write(writeEnd.get(), "x", 1) == 1) {
  }
  require(::fcntl(writeEnd.get(), F_SETFL, 0) == 0, "fcntl");
  return {std::move(readEnd), std::move(writeEnd)};
}

Connection errorConnection(StandardError kind) {
  switch (kind) {
    case StandardError::terminal:
      return terminal();
    case StandardError::stuckPipe:
      return stuckPipe();
    case StandardError::pipe:
      break;
  }
  return outputPipe();
}

Connection outputConnection(StandardOutput kind) {
  if (kind == StandardOutput::terminal) {
    return terminal();
  }
  Connection pipe = outputPipe();
  if (kind == StandardOutput::brokenPipe) {
    pipe.ours = FileDescriptor::adopt(-1);
  }
  return pipe;
}

class SpawnActions {
 public:
  SpawnActions() { posix_spawn_file_actions_init(&actions_); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;
  ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }

  void give(const FileDescriptor& descriptor, int as) {
    posix_spawn_file_actions_adddup2(&actions_, descriptor.get(), as);
  }
  void writeTo(const std::string& file, int as) {
    posix_spawn_file_actions_addopen(&actions_, as, file.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0644);
  }
  void enter(const std::string& directory) {
    posix_spawn_file_actions_addchdir_np(&actions_, directory.c_str());
  }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

/// The program starts without blocked or ignored signals, independently of the test's signals.
class SpawnAttributes {
 public:
  SpawnAttributes() {
    sigset_t none;
    sigset_t broken;
    sigemptyset(&none);
    sigemptyset(&broken);
    sigaddset(&broken, SIGPIPE);
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &broken);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  SpawnAttributes(const SpawnAttributes&) = delete;
  SpawnAttributes& operator=(const SpawnAttributes&) = delete;
  ~SpawnAttributes() { posix_spawnattr_destroy(&attributes_); }

  const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& text : texts) {
    result.push_back(text.data());
  }
  result.push_back(nullptr);
  return result;
}

pid_t spawn(const Command& command, SpawnActions& actions) {
  std::vector<std::string> arguments = command.arguments;
  std::vector<std::string> variables;
  for (const auto& [name, value] : command.environment) {
    variables.push_back(name + "=" + value);
  }
  actions.enter(command.workingDirectory);
  const SpawnAttributes attributes;
  pid_t process = 0;
  const int error =
      ::posix_spawnp(&process, arguments.front().c_str(), actions.get(), attributes.get(),
                     pointers(arguments).data(), pointers(variables).data());
  if (error != 0) {
    throw std::system_error(error, std::generic_category(), "cannot start " + arguments.front());
  }
  return process;
}

/// Collects the output of a program until all writers have closed it.
struct Collector {
  FileDescriptor source;
  std::string text;
  bool ended = false;

  void collect() {
    std::array<char, 65536> buffer{};
    while (!ended) {
      const ssize_t count = ::read(source.get(), buffer.data(), buffer.size());
      if (count < 0 && errno == EINTR) {
        continue;
      }
      if (count < 0 && errno == EAGAIN) {
        return;
      }
      // A terminal that its last user has closed fails with EIO.
      ended = count <= 0;
      text.append(buffer.data(), ended ? 0 : static_cast<std::size_t>(count));
    }
  }
};

/// Writes the input of a program as fast as the program reads it.
struct Feeder {
  FileDescriptor target;
  std::string_view rest;

  void feed() {
    if (target.isOpen() && !rest.empty()) {
      const ssize_t count = ::write(target.get(), rest.data(), rest.size());
      const bool gone = count < 0 && errno != EAGAIN && errno != EINTR;
      rest.remove_prefix(gone ? rest.size()
                              : static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    if (rest.empty()) {
      target = FileDescriptor::adopt(-1);
    }
  }
};

int descriptorOf(const Collector& collector) {
  return collector.ended ? -1 : collector.source.get();
}

void serveUntilEnd(pid_t process, Feeder& feeder, Collector& output, Collector& error) {
  const FileDescriptor end =
      FileDescriptor::adopt(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
  require(end.isOpen(), "pidfd_open");
  bool running = true;
  while (running) {
    feeder.feed();
    std::array<pollfd, 4> events{{{end.get(), POLLIN, 0},
                                  {descriptorOf(output), POLLIN, 0},
                                  {descriptorOf(error), POLLIN, 0},
                                  {feeder.target.get(), POLLOUT, 0}}};
    require(::poll(events.data(), events.size(), -1) >= 0 || errno == EINTR, "poll");
    running = events[0].revents == 0;
    output.collect();
    error.collect();
  }
}

pid_t parentOf(const std::filesystem::path& processFolder) {
  std::ifstream file(processFolder / "stat");
  std::string line;
  // Fails when the process ends meanwhile.
  std::getline(file, line, '\0');
  const std::size_t name = line.rfind(')');
  if (name == std::string::npos) {
    return 0;
  }
  pid_t parent = 0;
  const std::string_view rest = std::string_view(line).substr(name + 4);
  std::from_chars(rest.begin(), rest.end(), parent);
  return parent;
}

}  // namespace

Environment inheritedEnvironment() {
  Environment result;
  for (const char* name : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS",
                           "LLVM_PROFILE_FILE", "GCOV_PREFIX", "GCOV_PREFIX_STRIP",
                           "GCOV_ERROR_FILE", "VELMORA_MUTANT"}) {
    if (const char* value = std::getenv(name)) {
      result[name] = value;
    }
  }
  // Without this option, ThreadSanitizer lets each of thousands of programs wait a second at its
  // end.
  result["TSAN_OPTIONS"] += ":atexit_sleep_ms=0";
  return result;
}

Environment helperEnvironment() {
  Environment result = inheritedEnvironment();
  result["TSAN_OPTIONS"] += ":report_bugs=0";
  result["ASAN_OPTIONS"] += ":detect_leaks=0";
  return result;
}

std::array<FileDescriptor, 2> makeSocketPair() {
  std::array<int, 2> ends{};
  require(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0, "socketpair");
  return {FileDescriptor::adopt(ends[0]), FileDescriptor::adopt(ends[1])};
}

Outcome run(const Command& command) {
  // A program may end before it has read all of its input.
  std::signal(SIGPIPE, SIG_IGN);
  Connection input = command.input ? inputPipe() : emptyInput();
  Connection output = outputConnection(command.standardOutput);
  Connection error = errorConnection(command.standardError);
  SpawnActions actions;
  actions.give(input.theirs, STDIN_FILENO);
  actions.give(output.theirs, STDOUT_FILENO);
  actions.give(error.theirs, STDERR_FILENO);
  Outcome outcome;
  outcome.process = spawn(command, actions);
  for (Connection* connection : {&input, &output, &error}) {
    connection->theirs = FileDescriptor::adopt(-1);
  }
  Feeder feeder{std::move(input.ours), command.input ? *command.input : std::string_view()};
  const bool hasReader = output.ours.isOpen();
  Collector outputCollector{std::move(output.ours), {}, !hasReader};
  const bool isStuck = command.standardError == StandardError::stuckPipe;
  Collector errorCollector{std::move(error.ours), {}, isStuck};
  serveUntilEnd(outcome.process, feeder, outputCollector, errorCollector);
  int status = 0;
  rusage usage{};
  require(::wait4(outcome.process, &status, 0, &usage) == outcome.process, "wait4");
  outcome.peakMemory = usage.ru_maxrss;
  if (WIFEXITED(status)) {
    outcome.exitStatus = WEXITSTATUS(status);
  } else {
    outcome.signal = WTERMSIG(status);
  }
  outcome.output = std::move(outputCollector.text);
  outcome.error = std::move(errorCollector.text);
  outcome.released = outputCollector.ended && errorCollector.ended;
  return outcome;
}

pid_t start(const Command& command, const FileDescriptor& socket,
            const std::filesystem::path& errorFile) {
  SpawnActions actions;
  actions.give(socket, STDIN_FILENO);
  actions.give(socket, STDOUT_FILENO);
  if (!errorFile.empty()) {
    actions.writeTo(errorFile, STDERR_FILENO);
  }
  return spawn(command, actions);
}

int awaitEnd(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    require(errno == EINTR, "waitpid");
  }
  return status;
}

HelperProcess::HelperProcess(std::vector<std::string> arguments, const FileDescriptor& socket,
                             const std::filesystem::path& errorFile) {
  arguments.insert(arguments.begin(), {"setpriv", "--pdeathsig=KILL", "--"});
  process_ =
      start({.arguments = std::move(arguments), .environment = helperEnvironment(), .input = {}},
            socket, errorFile);
}

void HelperProcess::signal(int number) const { require(::kill(process_, number) == 0, "kill"); }

void HelperProcess::end() {
  if (const pid_t process = std::exchange(process_, 0)) {
    ::kill(process, SIGKILL);
    awaitEnd(process);
  }
}

void adoptOrphans() { require(::prctl(PR_SET_CHILD_SUBREAPER, 1) == 0, "prctl"); }

std::set<pid_t> children() {
  std::set<pid_t> result;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const std::string name = entry.path().filename();
    pid_t process = 0;
    std::from_chars(name.data(), name.data() + name.size(), process);
    if (process > 0 && parentOf(entry.path()) == ::getpid()) {
      result.insert(process);
    }
  }
  return result;
}

}  // namespace velmora::process
