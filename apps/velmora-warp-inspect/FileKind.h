// The kinds of files that can be checked.
#pragma once

#include <optional>
#include <string_view>

namespace velmora::inspect {

enum class FileKind { manifest, index, marker };

/// "manifest" and so on.
[[nodiscard]] std::string_view name(FileKind kind);

[[nodiscard]] std::optional<FileKind> fileKindNamed(std::string_view name);

/// What the file at `path` is taken for by its name: index and marker have theirs, and every other
/// file is a manifest.
[[nodiscard]] FileKind fileKindOf(std::string_view path);

}  // namespace velmora::inspect
