// The ways to decode a manifest that are measured beside each other.
#pragma once

#include "text/Text.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <variant>

namespace velmora {

/// Decodes a manifest, drops what came of it, and answers how many entries there were. May
/// overwrite the bytes, which are as readManifestBytes has them; keeps its working memory from one
/// call to the next, where it can. Throws for what is no manifest.
using Decode = std::function<std::size_t(std::string& bytes)>;

/// The same, beginning with the file.
using ReadAndDecode = std::function<std::size_t(const Text& path)>;

using Candidate = std::variant<Decode, ReadAndDecode>;

/// A new candidate of this name (bench/README.md). Those that look for no entries answer how many
/// bytes there were. Throws std::invalid_argument when there is none of the name.
[[nodiscard]] Candidate candidateNamed(std::string_view name);

}  // namespace velmora
