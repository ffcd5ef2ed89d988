#include "resolution/WarpMarker.h"

#include "json/strict/JSONReader.h"
#include "json/strict/RecordDecoding.h"
#include "platform/FileReader.h"
#include "platform/PlatformError.h"
#include "text/LexicalPath.h"

namespace velmora {

WarpMarker decodeWarpMarker(std::string& bytes, internal::JSONReader& reader) {
  WarpMarker marker;
  decode(reader.read(bytes), marker);
  return marker;
}

Text warpMarkerPath(const Text& folderPath) {
  return appendingPathComponent(folderPath, warpMarkerFileName);
}

std::optional<WarpMarker> readWarpMarker(const Text& folderPath, const FileReader& files,
                                         internal::JSONReader& reader) {
  const Text path = warpMarkerPath(folderPath);
  std::string bytes;
  try {
    bytes = files.read(path, maxWarpMarkerLength);
  } catch (const PlatformError& error) {
    if (isNoSuchFile(error)) {
      return std::nullopt;
    }
    throw;
  }
  return decodeWarpMarker(bytes, reader);
}

}  // namespace velmora
