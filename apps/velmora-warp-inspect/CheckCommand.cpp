#include "CheckCommand.h"

#include "EnumTable.h"
#include "StreamCopy.h"
#include "common/DisplayText.h"
#include "platform/FileReader.h"
#include "warpshared/reading/DestroyedManifestIndexDecoding.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <system_error>

namespace velmora::inspect {

namespace {

struct FileKindRow {
  FileKind value;
  std::string_view name;
  std::size_t maxLength;
};

constexpr FileKindRow fileKindRows[] = {
    {FileKind::manifest, "manifest", maxSharedWarpManifestLength},
    {FileKind::index, "index", maxDestroyedManifestIndexLength},
    {FileKind::marker, "marker", maxWarpMarkerLength}};

constexpr std::size_t verdictWidth = 9;
constexpr std::size_t kindWidth = 10;

std::size_t maxLengthOf(FileKind kind) { return rowFor(fileKindRows, kind).maxLength; }

/// Resolves `file` against the working directory. Keeps "..", which may follow a symbolic link.
std::string absolutePath(const std::string& file) {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(file, error);
  // Without a working directory, reading the file reports the error.
  return error ? file : path.native();
}

struct ContentJSON {
  JSONObject& object;

  void operator()(const ManifestSummary& manifest) const {
    object.addJSON("manifest", toJSON(manifest));
  }
  void operator()(const IndexSummary& index) const {
    JSONObject inner;
    inner.addNumber("records", index.recordCount);
    object.addJSON("index", inner.json());
  }
  void operator()(const WarpMarker& marker) const {
    JSONObject inner;
    inner.addText("warpID", marker.warpID);
    object.addJSON("marker", inner.json());
  }
  void operator()(const Fault& fault) const { object.addJSON("error", toJSON(fault)); }
};

struct ContentText {
  std::string operator()(const ManifestSummary& manifest) const {
    return indentedLine(verdictWidth, internetDateTime(manifest.createdAt) + "  " +
                                          displayText(manifest.originalFolderPath)) +
           indentedLine(verdictWidth, toText(manifest));
  }
  std::string operator()(const IndexSummary& index) const {
    return indentedLine(verdictWidth, counted(index.recordCount, "record", "records"));
  }
  std::string operator()(const WarpMarker& marker) const {
    return indentedLine(verdictWidth, "Warp " + displayText(marker.warpID));
  }
  std::string operator()(const Fault& fault) const {
    return indentedLine(verdictWidth, toText(fault));
  }
};

}  // namespace

std::optional<FileKind> fileKindNamed(std::string_view name) {
  const auto* const found = std::ranges::find(fileKindRows, name, &FileKindRow::name);
  return found != std::ranges::end(fileKindRows) ? std::optional(found->value) : std::nullopt;
}

FileKind fileKindOf(std::string_view path) {
  const std::string_view fileName = path.substr(path.rfind('/') + 1);
  if (fileName == warpMarkerFileName) {
    return FileKind::marker;
  }
  return fileName == destroyedManifestIndexFileName ? FileKind::index : FileKind::manifest;
}

CheckedFile FileChecker::check(const std::string& file, std::optional<FileKind> kind) {
  const FileKind wanted = kind.value_or(fileKindOf(file));
  return {.file = file, .kind = wanted, .content = contentOf(absolutePath(file), wanted)};
}

CheckedFile FileChecker::checkFileOrStream(const std::string& file, std::optional<FileKind> kind) {
  const FileKind wanted = kind.value_or(fileKindOf(file));
  try {
    if (const std::optional<StreamCopy> copy = copyOfStream(file, maxLengthOf(wanted))) {
      return {.file = file, .kind = wanted, .content = contentOf(copy->path(), wanted)};
    }
  } catch (const std::exception&) {
    return {.file = file, .kind = wanted, .content = faultOf(std::current_exception())};
  }
  return check(file, kind);
}

std::variant<ManifestSummary, IndexSummary, WarpMarker, Fault> FileChecker::contentOf(
    const std::string& path, FileKind kind) {
  try {
    switch (kind) {
      case FileKind::manifest:
        return manifests_.readSummary(path, files_);
      case FileKind::marker: {
        std::string bytes = files_.read(path, maxLengthOf(kind));
        return decodeWarpMarker(bytes, markers_);
      }
      case FileKind::index:
        break;
    }
    std::string bytes = files_.read(path, maxLengthOf(kind));
    const VelmoraWarpSharedDestroyedManifestIndex index = decodeDestroyedManifestIndex(bytes);
    validateDestroyedManifestIndex(index);
    return IndexSummary{.recordCount = index.records.size()};
  } catch (const std::exception&) {
    return faultInFile(std::current_exception(), path, files_);
  }
}

std::string toJSON(const CheckedFile& checked) {
  JSONObject object;
  object.addText("file", checked.file);
  object.addText("kind", rowFor(fileKindRows, checked.kind).name);
  object.addFlag("valid", checked.isValid());
  std::visit(ContentJSON{object}, checked.content);
  return object.json();
}

std::string toText(const CheckedFile& checked, Style style) {
  std::string text = checked.isValid() ? styledWord("valid", Tone::good, style, verdictWidth)
                                       : styledWord("invalid", Tone::bad, style, verdictWidth);
  const std::string_view kind = rowFor(fileKindRows, checked.kind).name;
  text.append(kind).append(kindWidth - kind.size(), ' ').append(displayText(checked.file));
  return text.append("\n").append(std::visit(ContentText{}, checked.content));
}

}  // namespace velmora::inspect
