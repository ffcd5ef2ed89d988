// The ways to decode a manifest that are measured beside each other.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace velmora {

/// Decodes a manifest, drops what came of it, and answers how many entries there were. May
/// overwrite the bytes, which are as readManifestBytes has them; keeps its working memory from one
/// call to the next, where it can. Throws for what is no manifest.
using Decode = std::function<std::size_t(std::string& bytes)>;

struct Candidate {
  std::string_view name;
  Decode (*makeDecode)();
};

[[nodiscard]] std::span<const Candidate> decodingCandidates();

}  // namespace velmora
