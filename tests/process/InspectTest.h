// What every test of velmora-warp-inspect as a process starts from: warped folders on disk.
#pragma once

#include "tests/process/JSONLine.h"
#include "tests/process/ProcessTest.h"
#include "warpshared/VelmoraWarpSharedManifest.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::process {

class InspectTest : public ProcessTest {
 protected:
  InspectTest();

  /// Runs the program, which must leave no trace, whatever it is asked. Nothing goes to standard
  /// error.
  Outcome inspect(const std::vector<std::string>& arguments, int exitStatus);
  /// The same with "--json" behind the command; the answer's lines.
  std::vector<JSONLine> inspectAsJSON(std::vector<std::string> arguments, int exitStatus);

  /// From here on, permissions hold the program back. What it needs is copied into the home.
  void runWithoutPrivileges();

  std::filesystem::path sharedRoot() const { return home.container() / "Warp"; }
  std::filesystem::path mirror() const { return sharedRoot() / "ManifestMirror"; }

  /// Puts a manifest into the mirror; returns the path of its file.
  std::string mirrorManifest(const VelmoraWarpSharedManifest& manifest,
                             std::string_view fileName) const;
  /// Makes a folder that is warped by `warpID`, whose manifest is `<warpID>.json`.
  std::string makeWarpedFolder(std::string_view name, std::string_view warpID) const;
};

}  // namespace velmora::process
