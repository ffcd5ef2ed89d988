// One fault in each system call that writes a request, in turn: whatever happens, there is either
// no request or a whole one, and the program says which.

#include "tests/support/RowName.h"
#include "tests/process/ProcessTest.h"
#include "tests/process/Trace.h"

#include <algorithm>
#include <csignal>
#include <cstring>

namespace velmora::process {

namespace {

/// What can make, fill, name, or keep a file. "?" lets strace pass over what a processor's system
/// does not have.
const std::string writingCalls =
    "?mkdir,mkdirat,?open,openat,?creat,write,writev,pwrite64,fsync,fdatasync,ftruncate,fchmod,"
    "?link,linkat,?rename,?renameat,renameat2,close";

/// The roads that a request takes to its name.
enum class Road { unnamedFile, partialFile };

/// Named files are what is left when a file without a name cannot be given one.
std::vector<std::string> diversions(Road road) {
  return road == Road::partialFile ? std::vector<std::string>{"linkat:error=EOPNOTSUPP"}
                                   : std::vector<std::string>();
}

bool beginsWithAny(const std::string& text, std::initializer_list<std::string_view> beginnings) {
  return std::ranges::any_of(
      beginnings, [&](std::string_view beginning) { return text.starts_with(beginning); });
}

class FaultWalkTest : public ProcessTest {
 protected:
  FaultWalkTest() {
    // The leak checker cannot work in a traced process.
    command.environment["ASAN_OPTIONS"] += ":detect_leaks=0";
  }

  /// Runs the program with faults, in a container of its own.
  Outcome runTraced(const std::string& calls, const std::vector<std::string>& injections) {
    container_ = home.path() / ("container " + std::to_string(++runs_));
    Command complete = command;
    complete.environment["VELMORA_GROUP_CONTAINER"] = container_;
    complete.arguments = tracingCommand(trace, calls, injections);
    complete.arguments.insert(complete.arguments.end(),
                              {VELMORA_TEST_PROGRAM, "--no-notify", folder});
    return process::run(complete);
  }

  std::filesystem::path requestDirectory() const { return container_ / "Warp" / "FinderHandoff"; }

  /// The requests of the last run, each checked to be whole.
  std::vector<std::string> requests() const {
    std::vector<std::string> result;
    for (const std::string& name : names()) {
      if (name.ends_with(".json")) {
        EXPECT_TRUE(hasForm(name, requestNameForm)) << name;
        const Request request = parseRequest(readFile(requestDirectory() / name));
        EXPECT_EQ(request.folderPaths, std::vector<std::string>{folder});
        result.push_back(name);
      }
    }
    return result;
  }

  /// Everything that is no request in the request directory of the last run.
  std::vector<std::string> remains() const {
    std::vector<std::string> result = names();
    std::erase_if(result, [](const std::string& name) { return name.ends_with(".json"); });
    return result;
  }

  /// Whether a call of the last run has to do with the container.
  bool concernsContainer(const TracedCall& call) const {
    return beginsWithAny(call.name, {"mkdir", "link", "rename"}) ||
           call.text.find(container_.native()) != std::string::npos;
  }

  /// Runs the program without a fault. The calls that it makes for the request.
  std::vector<TracedCall> callsOfAGoodRun(Road road) {
    const Outcome outcome = runTraced(writingCalls, diversions(road));
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.error;
    EXPECT_EQ(requests().size(), 1U);
    EXPECT_EQ(remains(), std::vector<std::string>());
    std::vector<TracedCall> calls = callsIn(trace);
    std::erase_if(calls, [this](const TracedCall& call) { return !concernsContainer(call); });
    // Without these there would be nothing to walk through.
    expectCalled(calls, {"mkdir"});
    expectCalled(calls, {"open"});
    expectCalled(calls, {"write", "pwrite"});
    expectCalled(calls, {"fsync", "fdatasync"});
    expectCalled(calls, {"link", "rename"});
    expectCalled(calls, {"close"});
    return calls;
  }

  const std::string folder = home.makeFolder("A");
  const std::filesystem::path trace = home.path() / "trace";

 private:
  static void expectCalled(const std::vector<TracedCall>& calls,
                           std::initializer_list<std::string_view> names) {
    EXPECT_TRUE(std::ranges::any_of(calls, [&](const TracedCall& call) {
      return beginsWithAny(call.name, names);
    })) << *names.begin();
  }

  std::vector<std::string> names() const {
    return std::filesystem::exists(requestDirectory()) ? namesIn(requestDirectory())
                                                       : std::vector<std::string>();
  }

  std::filesystem::path container_;
  int runs_ = 0;
};

/// Whether what the call does is part of keeping the content of a request: it cannot fail without
/// the request failing.
bool keepsContent(const TracedCall& call) {
  const bool concernsDirectory = call.text.find("FinderHandoff>") != std::string::npos;
  return beginsWithAny(call.name, {"write", "pwrite", "fsync", "fdatasync", "ftruncate"}) &&
         !concernsDirectory;
}

struct WalkCase {
  std::string name;
  /// The error, in strace's words and ours.
  std::string errorName;
  int error = 0;
  Road road = Road::unnamedFile;
};

std::vector<WalkCase> walkCases() {
  const std::pair<const char*, int> errors[] = {
      {"EACCES", EACCES}, {"ENOSPC", ENOSPC}, {"EIO", EIO}, {"EROFS", EROFS}, {"EMFILE", EMFILE}};
  std::vector<WalkCase> result;
  for (const auto& [name, error] : errors) {
    result.push_back({std::string(name) + "OnAnUnnamedFile", name, error, Road::unnamedFile});
    result.push_back({std::string(name) + "OnAPartialFile", name, error, Road::partialFile});
  }
  return result;
}

class ErrorWalkTest : public FaultWalkTest, public ::testing::WithParamInterface<WalkCase> {
 protected:
  void expectNothingOrWholeRequest(const Outcome& outcome) {
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(remains(), std::vector<std::string>());
    if (outcome.exitStatus == 0) {
      EXPECT_EQ(outcome.error, "");
      EXPECT_EQ(requests().size(), 1U);
      return;
    }
    EXPECT_EQ(outcome.exitStatus, 2);
    EXPECT_EQ(requests().size(), 0U);
    const std::string end = std::string("]: Velmora Finder Action handoff failed: ") +
                            std::strerror(GetParam().error) + "\n" +
                            message("en", warpHandoffFailed) + "\n";
    EXPECT_TRUE(outcome.error.ends_with(end)) << outcome.error;
    EXPECT_EQ(std::ranges::count(outcome.error, '\n'), 2) << outcome.error;
  }
};

TEST_P(ErrorWalkTest, leavesNothingOrAWholeRequest) {
  const Road road = GetParam().road;
  for (const TracedCall& call : callsOfAGoodRun(road)) {
    if (road == Road::partialFile && call.name == "linkat") {
      continue;
    }
    SCOPED_TRACE(call.text);
    std::vector<std::string> injections = diversions(road);
    injections.push_back(call.name + ":error=" + GetParam().errorName +
                         ":when=" + std::to_string(call.occurrence));
    const Outcome outcome = runTraced(writingCalls, injections);
    EXPECT_GE(injectedFaults(trace), 1);
    expectNothingOrWholeRequest(outcome);
    if (keepsContent(call)) {
      EXPECT_EQ(outcome.exitStatus, 2);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Errors, ErrorWalkTest, ::testing::ValuesIn(walkCases()), RowName());

struct KillCase {
  std::string name;
  Road road = Road::unnamedFile;
};

class KillWalkTest : public FaultWalkTest, public ::testing::WithParamInterface<KillCase> {};

TEST_P(KillWalkTest, leavesNothingOrAWholeRequest) {
  const std::vector<TracedCall> calls = callsOfAGoodRun(GetParam().road);
  const bool isUnnamed = std::ranges::none_of(
      calls, [](const TracedCall& call) { return call.name.starts_with("rename"); });
  int left = 0;
  for (const TracedCall& call : calls) {
    SCOPED_TRACE(call.text);
    std::vector<std::string> injections = diversions(GetParam().road);
    const std::string diverted = call.name == "linkat" && !injections.empty() ? "error=EIO:" : "";
    injections.push_back(call.name + ":" + diverted +
                         "signal=SIGKILL:when=" + std::to_string(call.occurrence));
    const Outcome outcome = runTraced(writingCalls, injections);
    EXPECT_EQ(outcome.signal, SIGKILL);
    const std::size_t count = requests().size();
    EXPECT_LE(count, 1U);
    left += static_cast<int>(count);
    if (isUnnamed) {
      EXPECT_EQ(remains(), std::vector<std::string>());
    }
  }
  // Killed at its first call it has written nothing, at its last everything.
  EXPECT_GT(left, 0);
  EXPECT_LT(left, static_cast<int>(calls.size()));
}

TEST_P(KillWalkTest, anyOtherCallWithFilesIsNoBetterMoment) {
  // Everything that it does with files, from the making of the directory on.
  const std::string calls = "%file,%desc,exit_group";
  std::vector<std::string> injections = diversions(GetParam().road);
  EXPECT_EQ(runTraced(calls, injections).exitStatus, 0);
  std::vector<TracedCall> all = callsIn(trace);
  const auto first = std::ranges::find_if(
      all, [](const TracedCall& call) { return call.name.starts_with("mkdir"); });
  ASSERT_NE(first, all.end());
  std::vector<TracedCall> walked(first, all.end());
  std::erase_if(walked, [](const TracedCall& call) { return call.name == "linkat"; });
  ASSERT_EQ(walked.back().name, "exit_group");
  int killed = 0;
  for (const TracedCall& call : walked) {
    SCOPED_TRACE(call.text);
    injections = diversions(GetParam().road);
    injections.push_back(call.name + ":signal=SIGKILL:when=" + std::to_string(call.occurrence));
    const Outcome outcome = runTraced(calls, injections);
    // Calls on behalf of GIO's threads may be fewer in one run than in another.
    EXPECT_TRUE(outcome.signal == SIGKILL || outcome.exitStatus == 0);
    killed += outcome.signal == SIGKILL ? 1 : 0;
    EXPECT_LE(requests().size(), 1U);
  }
  EXPECT_GT(killed, static_cast<int>(walked.size()) / 2);
}

INSTANTIATE_TEST_SUITE_P(Kills, KillWalkTest,
                         ::testing::Values(KillCase{"unnamedFile", Road::unnamedFile},
                                           KillCase{"partialFile", Road::partialFile}),
                         RowName());

TEST_F(FaultWalkTest, directoriesAreMadeWithoutALookAboveTheNearestOneThatIsThere) {
  EXPECT_EQ(runTraced("?mkdir,mkdirat", {}).exitStatus, 0);
  const std::vector<TracedCall> calls = callsIn(trace);
  EXPECT_FALSE(calls.empty());
  const std::string container = requestDirectory().parent_path().parent_path();
  for (const TracedCall& call : calls) {
    EXPECT_NE(call.text.find(container), std::string::npos) << call.text;
  }
}

TEST_F(FaultWalkTest, requestIsWrittenWhereFilesCannotBeUnnamed) {
  const std::vector<TracedCall> calls = callsOfAGoodRun(Road::unnamedFile);
  const auto unnamed = std::ranges::find_if(calls, [](const TracedCall& call) {
    return call.text.find("O_TMPFILE") != std::string::npos;
  });
  ASSERT_NE(unnamed, calls.end());
  for (const char* error : {"EOPNOTSUPP", "EISDIR", "ENOENT", "EINVAL"}) {
    SCOPED_TRACE(error);
    const Outcome outcome = runTraced(
        writingCalls,
        {unnamed->name + ":error=" + error + ":when=" + std::to_string(unnamed->occurrence)});
    EXPECT_EQ(injectedFaults(trace), 1);
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.error;
    EXPECT_EQ(requests().size(), 1U);
    EXPECT_EQ(remains(), std::vector<std::string>());
  }
}

TEST_F(FaultWalkTest, interruptedCallsAreRepeated) {
  for (const TracedCall& call : callsOfAGoodRun(Road::unnamedFile)) {
    if (!beginsWithAny(call.name, {"open", "write", "fsync"})) {
      continue;
    }
    SCOPED_TRACE(call.text);
    const Outcome outcome = runTraced(
        writingCalls, {call.name + ":error=EINTR:when=" + std::to_string(call.occurrence)});
    EXPECT_EQ(injectedFaults(trace), 1);
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.error;
    EXPECT_EQ(requests().size(), 1U);
    EXPECT_EQ(remains(), std::vector<std::string>());
  }
}

}  // namespace

}  // namespace velmora::process
