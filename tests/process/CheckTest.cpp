// --check answers by the exit status and changes nothing.

#include "tests/process/ProcessTest.h"

namespace velmora::process {

namespace {

TEST_F(ProcessTest, checkAnswersByTheExitStatusOnly) {
  const BrokenBus bus(BusStage::connected);
  setBus(bus.address());
  command.environment["LANG"] = "ja_JP.UTF-8";
  installApplication("DBusActivatable=true\n" + execLine());
  home.makeFolder("folder");
  home.makeFile("file");
  command.workingDirectory = home.folders();
  const struct {
    std::vector<std::string> arguments;
    int exitStatus;
  } rows[] = {
      {{"folder"}, 0},
      {{"file", "folder"}, 0},
      {{"file"}, 1},
      {{"--no-notify", "file"}, 1},
      {{"--restore", "folder"}, 1},
      {{"--files0-from=-"}, 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(::testing::PrintToString(row.arguments));
    std::vector<std::string> arguments = row.arguments;
    arguments.insert(arguments.begin(), "--check");
    expectCancelled(run(arguments), row.exitStatus, "");
  }
  EXPECT_FALSE(bus.hasCaller());
}

TEST_F(ProcessTest, checkNeedsNoContainer) {
  writeFile(home.container(), "");
  expectCancelled(run({"--check", home.makeFolder("folder")}), 0, "");
}

}  // namespace

}  // namespace velmora::process
