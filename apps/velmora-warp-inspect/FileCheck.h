// Whether a file is what it should be, by the code that the actions read it with.
#pragma once

#include "FileKind.h"
#include "Report.h"
#include "Terminal.h"
#include "json/JSONReader.h"
#include "resolution/WarpMarker.h"
#include "warpshared/ManifestDecoding.h"

#include <cstddef>
#include <optional>
#include <string>
#include <variant>

namespace velmora {

class FileReader;

namespace inspect {

/// What is told of a valid index.
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

  /// Checks `file`, relative to the working directory where it is not absolute; for what it is
  /// taken by its name unless `kind` says. Never fails: what goes wrong is told.
  [[nodiscard]] CheckedFile check(const std::string& file, std::optional<FileKind> kind);

 private:
  std::variant<ManifestSummary, IndexSummary, WarpMarker, Fault> contentOf(const std::string& path,
                                                                           FileKind kind);

  const FileReader& files_;
  ManifestDecoder manifests_;
  JSONReader markers_;
};

/// As a JSON object.
[[nodiscard]] std::string toJSON(const CheckedFile& checked);

/// In lines for people.
[[nodiscard]] std::string toText(const CheckedFile& checked, Style style);

}  // namespace inspect

}  // namespace velmora
