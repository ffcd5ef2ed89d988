#include "FileKind.h"

#include "resolution/WarpMarker.h"
#include "warpshared/records/DestroyedManifestIndex.h"

#include <algorithm>
#include <array>

namespace velmora::inspect {

namespace {

constexpr std::array fileKinds = {FileKind::manifest, FileKind::index, FileKind::marker};

}  // namespace

std::string_view name(FileKind kind) {
  switch (kind) {
    case FileKind::manifest:
      return "manifest";
    case FileKind::index:
      return "index";
    case FileKind::marker:
      break;
  }
  return "marker";
}

std::optional<FileKind> fileKindNamed(std::string_view kindName) {
  const auto found = std::ranges::find(fileKinds, kindName, name);
  return found != fileKinds.end() ? std::optional(*found) : std::nullopt;
}

FileKind fileKindOf(std::string_view path) {
  const std::string_view fileName = path.substr(path.rfind('/') + 1);
  if (fileName == warpMarkerFileName) {
    return FileKind::marker;
  }
  return fileName == destroyedManifestIndexFileName ? FileKind::index : FileKind::manifest;
}

}  // namespace velmora::inspect
