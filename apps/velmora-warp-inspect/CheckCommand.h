// The command `check`: whether a file is valid. The actions read files with the same code.
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

/// The kind of the file at `path`, from its name. An index and a marker have fixed names; every
/// other file is treated as a manifest.
[[nodiscard]] FileKind fileKindOf(std::string_view path);

/// The reported content of a valid index.
struct IndexSummary {
  std::size_t recordCount = 0;
};

struct CheckedFile {
  /// The operand of the user, unchanged.
  std::string file;
  FileKind kind = FileKind::manifest;
  std::variant<ManifestSummary, IndexSummary, WarpMarker, Fault> content;

  [[nodiscard]] bool isValid() const { return !std::holds_alternative<Fault>(content); }
};

/// Checks one file after the other, and keeps its memory. One thread at a time.
class FileChecker {
 public:
  /// `files` is kept by reference.
  explicit FileChecker(const FileReader& files) : files_(files) {}

  /// Checks the regular file `file`. A relative path is resolved against the working directory.
  /// Without `kind`, the file's name decides its kind. Each error becomes the fault in the result.
  [[nodiscard]] CheckedFile check(const std::string& file, std::optional<FileKind> kind);

  /// The same for a file that the user names, which may also be a stream (StreamCopy.h).
  [[nodiscard]] CheckedFile checkFileOrStream(const std::string& file,
                                              std::optional<FileKind> kind);

 private:
  std::variant<ManifestSummary, IndexSummary, WarpMarker, Fault> contentOf(const std::string& path,
                                                                           FileKind kind);

  const FileReader& files_;
  ManifestDecoder manifests_;
  internal::JSONReader markers_;
};

/// Formats the result as a JSON object.
[[nodiscard]] std::string toJSON(const CheckedFile& checked);

/// Formats the result as lines of text for people.
[[nodiscard]] std::string toText(const CheckedFile& checked, Style style);

}  // namespace inspect

}  // namespace velmora
