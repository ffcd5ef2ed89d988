// The fixture of tests of velmora-warp-inspect as a process: warped folders on disk.
#pragma once

#include "tests/process/JSONLine.h"
#include "tests/process/ProcessTest.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::process {

class InspectTest : public ProcessTest {
 protected:
  InspectTest() { command.arguments = {VELMORA_TEST_INSPECT_PROGRAM}; }

  /// Runs the program. Expects that it changes nothing and writes nothing to standard error.
  Outcome inspect(const std::vector<std::string>& arguments, int exitStatus);
  /// Runs it with "--json" after the command. Returns the lines of the answer.
  std::vector<JSONLine> inspectAsJSON(std::vector<std::string> arguments, int exitStatus);
  /// The same for an answer of one line.
  JSONLine onlyLine(const std::vector<std::string>& arguments, int exitStatus);

  std::filesystem::path sharedRoot() const { return home.container() / "Warp"; }
  std::filesystem::path mirror() const { return sharedRoot() / "ManifestMirror"; }
  std::filesystem::path index() const { return sharedRoot() / "destroyed-manifest-index.json"; }

  /// Puts a manifest into the mirror.
  void mirrorManifest(const VelmoraWarpSharedManifest& manifest, std::string_view fileName) const;
  /// Lets the program run as a user who cannot look into `directory`.
  void lockOut(const std::filesystem::path& directory);
  /// Creates a folder with the marker and the manifest `<warpID>.json` of a Warp.
  std::string makeWarpedFolder(std::string_view name, std::string_view warpID) const;

  ~InspectTest() override;

 private:
  std::filesystem::path locked_;
};

}  // namespace velmora::process
