// Each system call that writes a request fails in turn. Then there is either no request or a whole
// one, and the exit status says which.

#include "tests/process/ProcessTest.h"
#include "tests/process/Trace.h"

#include <algorithm>
#include <csignal>
#include <cstring>

namespace velmora::process {

namespace {

/// The calls that create, fill, name, or keep a file. strace ignores a call with "?" that the
/// processor's system lacks.
const std::string writingCalls =
    "?mkdir,mkdirat,?open,openat,?creat,write,writev,pwrite64,fsync,fdatasync,ftruncate,fchmod,"
    "?link,linkat,?rename,?renameat,renameat2,close";

/// The ways to write a request. The writer uses a partial file when an unnamed file cannot get a
/// name.
enum class WritingWay { unnamedFile, partialFile };

std::vector<std::string> injectionsFor(WritingWay way) {
  return way == WritingWay::partialFile ? std::vector<std::string>{"linkat:error=EOPNOTSUPP"}
                                        : std::vector<std::string>();
}

bool beginsWithAny(const std::string& text, std::initializer_list<std::string_view> beginnings) {
  return std::ranges::any_of(
      beginnings, [&](std::string_view beginning) { return text.starts_with(beginning); });
}

std::string injection(const TracedCall& call, const std::string& fault) {
  return call.name + ":" + fault + ":when=" + std::to_string(call.occurrence);
}

/// Whether the call writes the content of a request, so that its failure must fail the request.
bool keepsContent(const TracedCall& call) {
  const bool concernsFile = call.text.find("FinderHandoff/") != std::string::npos;
  return beginsWithAny(call.name, {"write", "pwrite", "fsync", "fdatasync", "ftruncate"}) &&
         concernsFile;
}

class FaultWalkTest : public ProcessTest {
 protected:
  FaultWalkTest() {
    // The leak checker does not work in a traced process.
    command.environment["ASAN_OPTIONS"] += ":detect_leaks=0";
  }

  /// Runs the program with faults, in a new container.
  Outcome runTraced(const std::string& calls, const std::vector<std::string>& injections) {
    container_ = home.path() / ("container " + std::to_string(++runs_));
    Command complete = command;
    complete.environment["VELMORA_GROUP_CONTAINER"] = container_;
    complete.arguments = tracingCommand(trace, calls, injections);
    complete.arguments.insert(complete.arguments.end(),
                              {VELMORA_TEST_PROGRAM, "--no-notify", folder});
    return process::run(complete);
  }

  /// The number of requests of the last run. Expects each of them to be whole.
  std::size_t requests() const {
    std::size_t count = 0;
    for (const std::string& name : names()) {
      if (name.ends_with(".json")) {
        EXPECT_TRUE(hasForm(name, requestNameForm)) << name;
        const Request request = parseRequest(readFile(requestDirectory() / name));
        EXPECT_EQ(request.folderPaths, std::vector<std::string>{folder});
        ++count;
      }
    }
    return count;
  }

  /// The other files in the request directory of the last run.
  std::vector<std::string> remains() const {
    std::vector<std::string> result = names();
    std::erase_if(result, [](const std::string& name) { return name.ends_with(".json"); });
    return result;
  }

  void expectWholeRequest(const Outcome& outcome) {
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(requests(), 1U);
    EXPECT_EQ(remains(), std::vector<std::string>());
  }

  /// Runs the program without a fault. Returns those of its `calls` that belong to the request.
  std::vector<TracedCall> callsOfASuccessfulRun(const std::string& calls, WritingWay way) {
    expectWholeRequest(runTraced(calls, injectionsFor(way)));
    std::vector<TracedCall> result = callsIn(trace);
    std::erase_if(result, [this](const TracedCall& call) {
      return !beginsWithAny(call.name, {"mkdir", "link", "rename"}) &&
             call.text.find(container_.native()) == std::string::npos;
    });
    // Expects a call of each kind, because the walk would otherwise test nothing.
    const std::initializer_list<std::string_view> kinds[] = {
        {"mkdir"},          {"open"}, {"write", "pwrite"}, {"fsync", "fdatasync"},
        {"link", "rename"}, {"close"}};
    for (const auto& kind : kinds) {
      EXPECT_TRUE(std::ranges::any_of(result, [&](const TracedCall& call) {
        return beginsWithAny(call.name, kind);
      })) << *kind.begin();
    }
    return result;
  }

  /// Lets each call fail with one of the errors. A failed call must not do more than fail the
  /// request.
  void walkThroughErrors(WritingWay way, std::size_t firstError) {
    constexpr std::pair<const char*, int> errors[] = {
        {"EACCES", EACCES}, {"ENOSPC", ENOSPC}, {"EIO", EIO}, {"EROFS", EROFS}, {"EMFILE", EMFILE}};
    std::size_t number = firstError;
    for (const TracedCall& call : callsOfASuccessfulRun(writingCalls, way)) {
      if (way == WritingWay::partialFile && call.name == "linkat") {
        continue;
      }
      const auto& [errorName, error] = errors[number++ % std::size(errors)];
      SCOPED_TRACE(call.text + " " + errorName);
      std::vector<std::string> injections = injectionsFor(way);
      injections.push_back(injection(call, std::string("error=") + errorName));
      const Outcome outcome = runTraced(writingCalls, injections);
      EXPECT_GE(injectedFaults(trace), 1);
      if (outcome.exitStatus == 0) {
        EXPECT_FALSE(keepsContent(call));
        expectWholeRequest(outcome);
      } else {
        expectFailure(outcome, std::strerror(error));
      }
    }
  }

  void expectFailure(const Outcome& outcome, const std::string& description) {
    EXPECT_EQ(outcome.exitStatus, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(requests(), 0U);
    EXPECT_EQ(remains(), std::vector<std::string>());
    EXPECT_TRUE(outcome.error.ends_with("]: Velmora Finder Action handoff failed: " + description +
                                        "\n" + message("en", warpHandoffFailed) + "\n"))
        << outcome.error;
    EXPECT_EQ(std::ranges::count(outcome.error, '\n'), 2) << outcome.error;
  }

  /// Kills the program at each call that concerns the container.
  void walkThroughKills(WritingWay way) {
    const std::vector<TracedCall> calls = callsOfASuccessfulRun("%file,%desc", way);
    std::size_t left = 0;
    for (const TracedCall& call : calls) {
      SCOPED_TRACE(call.text);
      std::vector<std::string> injections = injectionsFor(way);
      const std::string diverted = call.name == "linkat" && !injections.empty() ? "error=EIO:" : "";
      injections.push_back(injection(call, diverted + "signal=SIGKILL"));
      EXPECT_EQ(runTraced("%file,%desc", injections).signal, SIGKILL);
      EXPECT_LE(requests(), 1U);
      left += requests();
      if (way == WritingWay::unnamedFile) {
        EXPECT_EQ(remains(), std::vector<std::string>());
      }
    }
    // The program has written nothing at its first call, and everything at its last call.
    EXPECT_GT(left, 0U);
    EXPECT_LT(left, calls.size());
  }

  const std::string folder = home.makeFolder("A");
  const std::filesystem::path trace = home.path() / "trace";

  std::filesystem::path requestDirectory() const { return container_ / "Warp" / "FinderHandoff"; }

 private:
  std::vector<std::string> names() const {
    return std::filesystem::exists(requestDirectory()) ? namesIn(requestDirectory())
                                                       : std::vector<std::string>();
  }

  std::filesystem::path container_;
  int runs_ = 0;
};

TEST_F(FaultWalkTest, errorWithAnUnnamedFileLeavesNothingOrAWholeRequest) {
  walkThroughErrors(WritingWay::unnamedFile, 0);
}

TEST_F(FaultWalkTest, errorWithAPartialFileLeavesNothingOrAWholeRequest) {
  walkThroughErrors(WritingWay::partialFile, 2);
}

TEST_F(FaultWalkTest, killWithAnUnnamedFileLeavesNothingOrAWholeRequest) {
  walkThroughKills(WritingWay::unnamedFile);
}

TEST_F(FaultWalkTest, killWithAPartialFileLeavesNothingOrAWholeRequest) {
  walkThroughKills(WritingWay::partialFile);
}

TEST_F(FaultWalkTest, mkdirIsCalledOnlyFromTheContainerDownwards) {
  EXPECT_EQ(runTraced("?mkdir,mkdirat", {}).exitStatus, 0);
  const std::vector<TracedCall> calls = callsIn(trace);
  EXPECT_FALSE(calls.empty());
  const std::string container = requestDirectory().parent_path().parent_path();
  for (const TracedCall& call : calls) {
    EXPECT_NE(call.text.find(container), std::string::npos) << call.text;
  }
}

TEST_F(FaultWalkTest, newDirectoriesAndTheRequestAreSynchronised) {
  EXPECT_EQ(runTraced("fsync", {}).exitStatus, 0);
  std::vector<std::string> synchronised;
  for (const TracedCall& call : callsIn(trace)) {
    const std::size_t begin = call.text.find('<') + 1;
    synchronised.push_back(call.text.substr(begin, call.text.find('>') - begin));
  }
  const std::filesystem::path root = requestDirectory().parent_path();
  ASSERT_EQ(synchronised.size(), 5U);
  EXPECT_EQ(synchronised[0], root.parent_path().parent_path());
  EXPECT_EQ(synchronised[1], root.parent_path());
  EXPECT_EQ(synchronised[2], root);
  // The file has no name yet.
  EXPECT_TRUE(synchronised[3].starts_with(requestDirectory().string() + "/")) << synchronised[3];
  EXPECT_EQ(synchronised[4], requestDirectory());
}

TEST_F(FaultWalkTest, requestIsWrittenWithoutUnnamedFiles) {
  const std::vector<TracedCall> calls =
      callsOfASuccessfulRun(writingCalls, WritingWay::unnamedFile);
  const auto unnamed = std::ranges::find_if(calls, [](const TracedCall& call) {
    return call.text.find("O_TMPFILE") != std::string::npos;
  });
  ASSERT_NE(unnamed, calls.end());
  for (const char* error : {"EOPNOTSUPP", "EISDIR", "ENOENT", "EINVAL"}) {
    SCOPED_TRACE(error);
    const Outcome outcome =
        runTraced(writingCalls, {injection(*unnamed, std::string("error=") + error)});
    EXPECT_EQ(injectedFaults(trace), 1);
    expectWholeRequest(outcome);
  }
}

TEST_F(FaultWalkTest, interruptedCallsAreRepeated) {
  for (const TracedCall& call : callsOfASuccessfulRun(writingCalls, WritingWay::unnamedFile)) {
    if (beginsWithAny(call.name, {"open", "write", "fsync"})) {
      SCOPED_TRACE(call.text);
      const Outcome outcome = runTraced(writingCalls, {injection(call, "error=EINTR")});
      EXPECT_EQ(injectedFaults(trace), 1);
      expectWholeRequest(outcome);
    }
  }
}

}  // namespace

}  // namespace velmora::process
