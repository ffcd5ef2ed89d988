// Requests that cannot be written: one line for the log, the sentence, and nothing left behind.

#include "tests/process/Buses.h"
#include "tests/process/ProcessTest.h"

#include <unistd.h>

#include <cstring>

namespace velmora::process {

namespace {

namespace filesystem = std::filesystem;

/// The user who owns nothing, and one whom the system has no entry for.
constexpr uid_t nobody = 65534;
constexpr uid_t stranger = 54321;

std::string logLine(const Outcome& outcome, const std::string& description) {
  return "velmora-finder-action[" + std::to_string(outcome.process) +
         "]: Velmora Finder Action handoff failed: " + description + "\n";
}

/// With a bus to signal on and an application to launch, so that doing so would be noticed.
class FailedHandoffTest : public ProcessTest {
 protected:
  FailedHandoffTest() {
    command.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
    installApplication(execLine());
  }

  void expectHandoffFails(int error) { expectHandoffFails(std::strerror(error)); }

  void expectHandoffFails(const std::string& description) {
    const Outcome outcome = run({folder});
    expectCancelled(outcome, 2,
                    logLine(outcome, description) + message("en", warpHandoffFailed) + "\n");
    EXPECT_TRUE(receiver.recordsUntilGone(outcome.process).empty());
  }

  /// Lets the program run as someone without privileges. Everything that it needs to do so is
  /// copied into the home, which is all that this user is sure to reach.
  void runAs(uid_t user) {
    filesystem::permissions(home.path(), filesystem::perms(0755));
    filesystem::permissions(home.runtimeDirectory(), filesystem::perms(0755));
    filesystem::permissions(home.runtimeDirectory() / "bus", filesystem::perms(0777));
    const filesystem::path program = home.path() / "velmora-finder-action";
    filesystem::copy_file(VELMORA_TEST_PROGRAM, program);
    filesystem::copy(VELMORA_TEST_RESOURCES, home.path() / "resources",
                     filesystem::copy_options::recursive);
    command.environment["VELMORA_RESOURCE_DIR"] = home.path() / "resources";
    // Where a build that counts lines puts its counts.
    filesystem::create_directory(home.path() / "coverage");
    filesystem::permissions(home.path() / "coverage", filesystem::perms(0777));
    command.environment["GCOV_PREFIX"] = home.path() / "coverage";
    command.arguments = commandAs(user);
    command.arguments.push_back(program);
  }

  static std::vector<std::string> commandAs(uid_t user) {
    const std::string number = std::to_string(user);
    if (::geteuid() == 0) {
      return {"setpriv", "--reuid=" + number, "--regid=" + number, "--clear-groups", "--"};
    }
    return user == nobody ? std::vector<std::string>()
                          : std::vector<std::string>{"unshare", "--map-user=" + number, "--"};
  }

  /// A directory that only its owner may write to, and only that user owns.
  void makeReadOnly(const filesystem::path& directory) const {
    filesystem::create_directories(directory);
    if (::geteuid() == 0) {
      ASSERT_EQ(::chown(directory.c_str(), nobody, nobody), 0);
    }
    filesystem::permissions(directory, filesystem::perms(0555));
  }

  std::string folder = home.makeFolder("A");
  PrivateBus bus{home};
  Peer receiver{bus.address(), {"--match", handoffRule}};
};

TEST_F(FailedHandoffTest, containerIsAFile) {
  writeFile(home.container(), "");
  expectHandoffFails(ENOTDIR);
}

TEST_F(FailedHandoffTest, sharedRootIsAFile) {
  writeFile(home.container() / "Warp", "");
  expectHandoffFails(ENOTDIR);
}

TEST_F(FailedHandoffTest, requestDirectoryIsAFile) {
  writeFile(home.requestDirectory(), "");
  expectHandoffFails(EEXIST);
}

TEST_F(FailedHandoffTest, sharedRootLeadsNowhere) {
  filesystem::create_directory(home.container());
  filesystem::create_symlink(home.path() / "missing" / "Warp", home.container() / "Warp");
  expectHandoffFails(EEXIST);
}

TEST_F(FailedHandoffTest, containerCannotBeMade) {
  makeReadOnly(home.path() / "locked");
  command.environment["VELMORA_GROUP_CONTAINER"] = home.path() / "locked" / "container";
  runAs(nobody);
  expectHandoffFails(EACCES);
}

TEST_F(FailedHandoffTest, requestDirectoryIsReadOnly) {
  makeReadOnly(home.requestDirectory());
  runAs(nobody);
  expectHandoffFails(EACCES);
}

#ifndef VELMORA_TEST_WITH_THREAD_SANITIZER
// ThreadSanitizer writes a file of its own before the program begins, and would end there.
TEST_F(FailedHandoffTest, filesMustNotGrow) {
  // As by the shell's "ulimit -f 0", whose signal would end the program.
  filesystem::create_directories(home.requestDirectory());
  command.arguments = {"prlimit", "--fsize=0", "--", VELMORA_TEST_PROGRAM};
  expectHandoffFails(EFBIG);
}
#endif

TEST_F(FailedHandoffTest, userIsUnknownAndHasNoHome) {
  for (const char* variable : {"HOME", "XDG_DATA_HOME", "VELMORA_GROUP_CONTAINER"}) {
    command.environment.erase(variable);
  }
  runAs(stranger);
  expectHandoffFails("The file doesn’t exist.");
}

TEST_F(FailedHandoffTest, sentenceIsInTheUsersLanguageAndTheLogInTheSystems) {
  writeFile(home.container(), "");
  command.environment["LANG"] = "ja_JP.UTF-8";
  const Outcome outcome = run({folder});
  expectCancelled(
      outcome, 2,
      logLine(outcome, std::strerror(ENOTDIR)) + message("ja", warpHandoffFailed) + "\n");
}

}  // namespace

}  // namespace velmora::process
