#include "tests/process/InspectTest.h"

#include "tests/fakes/WarpRecords.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <utility>

namespace velmora::process {

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

JSONLine InspectTest::onlyLine(const std::vector<std::string>& arguments, int exitStatus) {
  std::vector<JSONLine> lines = inspectAsJSON(arguments, exitStatus);
  EXPECT_EQ(lines.size(), 1U);
  return std::move(lines.at(0));
}

void InspectTest::mirrorManifest(const VelmoraWarpSharedManifest& manifest,
                                 std::string_view fileName) const {
  writeFile(mirror() / fileName, encodeManifest(manifest));
}

void InspectTest::lockOut(const std::filesystem::path& directory) {
  locked_ = directory;
  std::filesystem::permissions(locked_, std::filesystem::perms::none);
  runAs(nobody);
}

InspectTest::~InspectTest() {
  if (!locked_.empty()) {
    // The home can only be removed with these permissions.
    std::filesystem::permissions(locked_, std::filesystem::perms::owner_all);
  }
}

std::string InspectTest::makeWarpedFolder(std::string_view name, std::string_view warpID) const {
  std::string folder = home.makeFolder(name);
  writeFile(folder + "/.velmora-warped.json", markerJSON(warpID));
  mirrorManifest(manifestOf(folder, warpID), std::string(warpID) + ".json");
  return folder;
}

}  // namespace velmora::process
