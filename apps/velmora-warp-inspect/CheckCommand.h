// The command `check`: whether a file is what it should be, by the code that the actions read it
// with.
#pragma once

#include "Report.h"
#include "Terminal.h"
#include "json/strict/JSONReader.h"
#include "resolution/WarpMarker.h"
#include "warpshared/reading/ManifestDecoding.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace velmora {

class FileReader;

namespace inspect {

enum class FileKind { manifest, index, marker };

[[nodiscard]] std::optional<FileKind> fileKindNamed(std::string_view name);

/// The kind of the file at `path` by its name: index and marker have theirs, and every other file
/// is taken for a manifest.
[[nodiscard]] FileKind fileKindOf(std::string_view path);

/// The content of a valid index, as it is reported.
struct IndexSummary {
  std::size_t recordCount = 0;
};

struct CheckedFile {
  /// As the user named it.
  std::string file;
  FileKind kind = FileKind::manifest;
  std::variant<ManifestSummary, IndexSummary, WarpMarker, Fault> content;

  [[nodiscard]] bool isValid() const { return !std::holds_alternative<Fault>(content); }
};

/// Checks one file after the other and keeps its memory between them.
class FileChecker {
 public:
  /// `files` is kept by reference.
  explicit FileChecker(const FileReader& files) : files_(files) {}

  /// Checks `file`, relative to the working directory where it is not absolute; its name decides
  /// its kind unless `kind` does. Never fails: an error is the content's fault.
  [[nodiscard]] CheckedFile check(const std::string& file, std::optional<FileKind> kind);

 private:
  std::variant<ManifestSummary, IndexSummary, WarpMarker, Fault> contentOf(const std::string& path,
                                                                           FileKind kind);

  const FileReader& files_;
  ManifestDecoder manifests_;
  internal::JSONReader markers_;
};

/// As a JSON object.
[[nodiscard]] std::string toJSON(const CheckedFile& checked);

/// In lines for people.
[[nodiscard]] std::string toText(const CheckedFile& checked, Style style);

}  // namespace inspect

}  // namespace velmora
