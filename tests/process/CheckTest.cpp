// --check: an answer by the exit status, and no trace of the question.

#include "tests/support/RowName.h"
#include "tests/process/ProcessTest.h"

namespace velmora::process {

namespace {

struct CheckCase {
  const char* name;
  std::vector<std::string> arguments;
  std::vector<std::string> items;
  int exitStatus;
};

class CheckTest : public ProcessTest, public ::testing::WithParamInterface<CheckCase> {};

TEST_P(CheckTest, answersByTheExitStatusOnly) {
  const Listener bus(home.runtimeDirectory() / "bus");
  command.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + bus.path();
  command.environment["LANG"] = "ja_JP.UTF-8";
  installApplication("DBusActivatable=true\n" + execLine());
  home.makeFolder("folder");
  home.makeFile("file");
  command.workingDirectory = home.path() / "folders";
  std::vector<std::string> arguments = GetParam().arguments;
  arguments.insert(arguments.end(), GetParam().items.begin(), GetParam().items.end());
  expectCancelled(run(arguments), GetParam().exitStatus, "");
  EXPECT_FALSE(bus.hasCaller());
}

INSTANTIATE_TEST_SUITE_P(
    Checks, CheckTest,
    ::testing::Values(CheckCase{"folder", {"--check"}, {"folder"}, 0},
                      CheckCase{"folderBesideAFile", {"--check"}, {"file", "folder"}, 0},
                      CheckCase{"file", {"--check"}, {"file"}, 1},
                      CheckCase{"missing", {"--check"}, {"missing"}, 1},
                      CheckCase{"foreignURL", {"--check"}, {"http://host/folder"}, 1},
                      CheckCase{"withoutNotification", {"--check", "--no-notify"}, {"file"}, 1},
                      CheckCase{"restoreOfAFolder", {"--check", "--restore"}, {"folder"}, 1},
                      CheckCase{"emptyList", {"--check", "--files0-from=-"}, {}, 1}),
    RowName());

TEST_F(ProcessTest, checkNeedsNoContainer) {
  writeFile(home.container(), "");
  expectCancelled(run({"--check", home.makeFolder("folder")}), 0, "");
}

}  // namespace

}  // namespace velmora::process
