#include "ManifestReport.h"

#include "JSONObject.h"
#include "Terminal.h"

namespace velmora::inspect {

std::string toJSON(const ManifestSummary& manifest) {
  JSONObject object;
  object.addText("warpID", manifest.warpID);
  object.addText("manifestKey", manifest.manifestKey);
  object.addText("originalFolderPath", manifest.originalFolderPath);
  object.addText("createdAt", internetDateTime(manifest.createdAt));
  object.addText("status", rawValue(manifest.status));
  object.addNumber("entries", manifest.entryCount);
  object.addNumber("samples", manifest.sampleCount);
  return object.json();
}

std::string toText(const ManifestSummary& manifest) {
  std::string text = "Warp ";
  text.append(displayText(manifest.warpID)).append(", ").append(rawValue(manifest.status));
  text.append(", ").append(counted(manifest.entryCount, "entry", "entries"));
  text.append(", ").append(counted(manifest.sampleCount, "sample", "samples"));
  return text.append(", key ").append(displayText(manifest.manifestKey));
}

}  // namespace velmora::inspect
