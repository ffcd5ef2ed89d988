// Whatever the system refuses to the program, the request is in place and the exit status is 0, or
// there is none and it is 2. Signals and launches are only hints. GLib by itself would end the
// program when it gets no memory, descriptor or thread.

#include "tests/process/ProcessTest.h"

#include <filesystem>
#include <string>
#include <vector>

namespace velmora::process {

namespace {

// The sanitizers' runtimes need more than the limits, and threads.
#ifndef VELMORA_TEST_WITH_SANITIZERS

constexpr long megabyte = 1024L * 1024;

class ResourceLimitsTest : public ProcessTest {
 protected:
  ResourceLimitsTest() {
    setBus(bus.address());
    std::filesystem::permissions(home.runtimeDirectory() / "bus", std::filesystem::perms(0777));
    // GLib needs forty times the memory of these lines.
    std::string lines;
    while (lines.size() < 250'000) {
      lines += "a=\n";
    }
    installApplication("DBusActivatable=true\nExec=/bin/true\n" + lines);
    // Limits on processes do not apply to root.
    runAs(nobody);
    program_ = command.arguments;
  }

  /// Runs the program under each limit of prlimit(1). Returns the number of requests.
  int walk(const std::string& limit, const std::vector<long>& values) {
    int requests = 0;
    for (const long value : values) {
      SCOPED_TRACE(limit + " " + std::to_string(value));
      command.arguments = program_;
      command.arguments.insert(command.arguments.end() - 1,
                               {"prlimit", "--" + limit + "=" + std::to_string(value), "--"});
      if (run({"--version"}).exitStatus != 0) {
        // The system cannot even start the program.
        continue;
      }
      const Outcome outcome = run({folder});
      EXPECT_EQ(outcome.signal, 0);
      if (outcome.exitStatus == 0) {
        EXPECT_EQ(outcome.error, "");
        EXPECT_EQ(onlyRequest().folderPaths, std::vector<std::string>{folder});
        ++requests;
      } else {
        EXPECT_EQ(outcome.exitStatus, 2);
        EXPECT_EQ(made(), std::set<std::string>());
      }
    }
    return requests;
  }

  const std::string folder = home.makeFolder("A");
  PrivateBus bus{home.runtimeDirectory()};

 private:
  std::vector<std::string> program_;
};

std::vector<long> steps(long first, long last, long step) {
  std::vector<long> values;
  for (long value = first; value <= last; value += step) {
    values.push_back(value);
  }
  return values;
}

TEST_F(ResourceLimitsTest, processesRunShort) { EXPECT_EQ(walk("nproc", {0, 1, 2, 3, 4}), 5); }

TEST_F(ResourceLimitsTest, descriptorsRunShort) {
  // Three are the standard streams.
  EXPECT_GE(walk("nofile", steps(3, 24, 1)), 20);
}

TEST_F(ResourceLimitsTest, memoryRunsShort) {
  EXPECT_GE(walk("as", steps(8 * megabyte, 128 * megabyte, 2 * megabyte)), 40);
  EXPECT_GE(walk("data", steps(megabyte, 64 * megabyte, 2 * megabyte)), 20);
}

#endif

}  // namespace

}  // namespace velmora::process
