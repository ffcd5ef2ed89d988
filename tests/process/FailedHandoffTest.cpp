// Requests that cannot be written: one line for the log, the message, and no remaining file.

#include "tests/process/ProcessTest.h"

#include <unistd.h>

#include <cstring>

namespace velmora::process {

namespace {

namespace filesystem = std::filesystem;

/// A user without an entry in the system.
constexpr unsigned stranger = 54321;

/// The bus and the application would show a signal or a launch.
class FailedHandoffTest : public ProcessTest {
 protected:
  FailedHandoffTest() {
    setBus(bus.address());
    filesystem::permissions(home.runtimeDirectory() / "bus", filesystem::perms(0777));
    receiver.listen("io.tolvane.Velmora");
    installApplication(execLine());
  }

  void expectHandoffFails(int error) { expectHandoffFails(std::strerror(error)); }

  /// Expects the message in the user's language, and the line for the log in the system's language.
  void expectHandoffFails(const std::string& description, const std::string& language = "en") {
    const Outcome outcome = run({folder});
    expectCancelled(outcome, 2,
                    "velmora-finder-action[" + std::to_string(outcome.process) +
                        "]: Velmora Finder Action handoff failed: " + description + "\n" +
                        message(language, warpHandoffFailed) + "\n");
    EXPECT_TRUE(receiver.receivedUntilGone(outcome.process).empty());
  }

  /// Creates a directory without write permission. The user `nobody` owns it if root runs the test.
  void makeReadOnly(const filesystem::path& directory) const {
    filesystem::create_directories(directory);
    if (::geteuid() == 0) {
      ASSERT_EQ(::chown(directory.c_str(), nobody, nobody), 0);
    }
    filesystem::permissions(directory, filesystem::perms(0555));
  }

  std::string folder = home.makeFolder("A");
  PrivateBus bus{home.runtimeDirectory()};
  BusPeer receiver{bus.address()};
};

TEST_F(FailedHandoffTest, fileIsInPlaceOfADirectory) {
  const struct {
    filesystem::path file;
    int error;
  } rows[] = {{home.container(), ENOTDIR},
              {home.container() / "Warp", ENOTDIR},
              {home.requestDirectory(), EEXIST}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.file);
    writeFile(row.file, "");
    expectHandoffFails(row.error);
    filesystem::remove_all(home.container());
  }
  writeFile(home.container(), "");
  command.environment["LANG"] = "ja_JP.UTF-8";
  expectHandoffFails(std::strerror(ENOTDIR), "ja");
}

TEST_F(FailedHandoffTest, sharedRootIsADanglingLink) {
  filesystem::create_directory(home.container());
  filesystem::create_symlink(home.path() / "missing" / "Warp", home.container() / "Warp");
  expectHandoffFails(EEXIST);
}

TEST_F(FailedHandoffTest, containerCannotBeCreated) {
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
// ThreadSanitizer writes a file before the program begins, which the limit would refuse.
TEST_F(FailedHandoffTest, fileSizeLimitIsZero) {
  // The limit of the shell's "ulimit -f 0". The signal of the limit would end the program.
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

}  // namespace

}  // namespace velmora::process
