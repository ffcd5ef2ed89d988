// What every test of velmora-warp-inspect as a process starts from: warped folders on disk.
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

  /// Runs the program, which must leave no trace, whatever it is asked. Nothing goes to standard
  /// error.
  Outcome inspect(const std::vector<std::string>& arguments, int exitStatus);
  /// The same with "--json" after the command; the answer's lines.
  std::vector<JSONLine> inspectAsJSON(std::vector<std::string> arguments, int exitStatus);
  /// The same of an answer of one line.
  JSONLine onlyLine(const std::vector<std::string>& arguments, int exitStatus);

  std::filesystem::path sharedRoot() const { return home.container() / "Warp"; }
  std::filesystem::path mirror() const { return sharedRoot() / "ManifestMirror"; }
  std::filesystem::path index() const { return sharedRoot() / "destroyed-manifest-index.json"; }

  /// Puts a manifest into the mirror.
  void mirrorManifest(const VelmoraWarpSharedManifest& manifest, std::string_view fileName) const;
  /// Makes a folder that is warped by `warpID`, whose manifest is `<warpID>.json`.
  std::string makeWarpedFolder(std::string_view name, std::string_view warpID) const;
};

}  // namespace velmora::process
