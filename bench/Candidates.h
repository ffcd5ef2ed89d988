// The compared ways to decode a manifest.
#pragma once

#include "text/Text.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <variant>

namespace velmora {

/// Decodes a manifest, drops the result, and returns the number of its entries. May overwrite the
/// bytes, which come from readManifestBytes. Keeps its working memory between calls if it can.
/// Throws for an invalid manifest.
using Decode = std::function<std::size_t(std::string& bytes)>;

/// Reads the file and decodes it in the same way.
using ReadAndDecode = std::function<std::size_t(const Text& path)>;

using Candidate = std::variant<Decode, ReadAndDecode>;

/// A new candidate with this name (bench/README.md). A candidate that looks for no entries returns
/// the number of bytes. Throws std::invalid_argument for an unknown name.
[[nodiscard]] Candidate candidateNamed(std::string_view name);

}  // namespace velmora
