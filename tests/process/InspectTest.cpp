#include "tests/process/InspectTest.h"

#include "tests/fakes/WarpRecords.h"

#include <unistd.h>

namespace velmora::process {

InspectTest::InspectTest() {
  command.arguments = {VELMORA_TEST_INSPECT_PROGRAM};
  command.workingDirectory = home.path();
}

Outcome InspectTest::inspect(const std::vector<std::string>& arguments, int exitStatus) {
  Outcome outcome = run(arguments);
  EXPECT_EQ(outcome.exitStatus, exitStatus);
  EXPECT_EQ(outcome.signal, 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(made(), std::set<std::string>());
  EXPECT_EQ(leftRunning(), std::set<pid_t>());
  return outcome;
}

std::vector<JSONLine> InspectTest::inspectAsJSON(std::vector<std::string> arguments,
                                                 int exitStatus) {
  arguments.insert(arguments.begin() + 1, "--json");
  return jsonLines(inspect(arguments, exitStatus).output);
}

void InspectTest::runWithoutPrivileges() {
  if (::geteuid() != 0) {
    return;
  }
  const auto allowAll = [](const std::filesystem::path& path) {
    std::filesystem::permissions(path, std::filesystem::perms(0777));
  };
  const std::filesystem::path program = home.path() / "program";
  std::filesystem::copy_file(VELMORA_TEST_INSPECT_PROGRAM, program);
  // Where a build that counts lines puts its counts: not in the home, where they would be a trace.
  command.environment["GCOV_PREFIX"] = "/nonexistent";
  allowAll(home.path());
  allowAll(home.runtimeDirectory());
  command.arguments = {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups",
                       "--",      program};
}

std::string InspectTest::mirrorManifest(const VelmoraWarpSharedManifest& manifest,
                                        std::string_view fileName) const {
  std::filesystem::path file = mirror() / fileName;
  writeFile(file, encodeManifest(manifest));
  return file;
}

std::string InspectTest::makeWarpedFolder(std::string_view name, std::string_view warpID) const {
  std::string folder = home.makeFolder(name);
  writeFile(std::filesystem::path(folder) / ".velmora-warped.json", markerJSON(warpID));
  mirrorManifest(manifestOf(folder, warpID), std::string(warpID) + ".json");
  return folder;
}

}  // namespace velmora::process
