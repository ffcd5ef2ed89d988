#include "tests/fakes/RecordedWarps.h"

#include "tests/fakes/WarpRecords.h"
#include "text/LexicalPath.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <string>

namespace velmora {

void prepareMirror(FakePlatform& fake) {
  fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
  fake.fileSystem.createDirectories(std::string(recordedWarpRoot) + "/ManifestMirror");
}

void mirror(FakePlatform& fake, const VelmoraWarpSharedManifest& manifest) {
  prepareMirror(fake);
  fake.fileSystem.files[std::string(recordedWarpRoot) + "/ManifestMirror/" +
                        manifest.warpID.utf8() + ".json"] = encodeManifest(manifest);
}

void mark(FakePlatform& fake, std::string_view folderPath, std::string_view warpID) {
  fake.fileSystem.createDirectories(folderPath);
  fake.fileSystem.files[appendingPathComponent(folderPath, ".velmora-warped.json")] =
      markerJSON(warpID);
}

void recordWarp(FakePlatform& fake, std::string_view folderPath, std::string_view warpID) {
  mirror(fake, manifestOf(folderPath, warpID));
  mark(fake, folderPath, warpID);
}

}  // namespace velmora
