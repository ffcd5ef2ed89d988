#include "bench/Candidates.h"

#include "bench/PlainRecords.h"
#include "warpshared/ManifestDecoding.h"
#include "warpshared/VelmoraWarpSharedManifest.h"

#include <simdjson.h>

#include <nlohmann/json.hpp>
#include <rapidjson/document.h>

#include <memory>
#include <stdexcept>

namespace velmora {
namespace {

// The yardstick: syntax, UTF-8 and a tree of the values, which nobody looks at.
Decode simdjsonDOM() {
  return [parser = std::make_shared<simdjson::dom::parser>()](std::string& bytes) {
    const simdjson::dom::element manifest = parser->parse(bytes);
    return manifest["entries"].get_array().size();
  };
}

Decode checkingOnly() {
  return [decoder = std::make_shared<ManifestDecoder>()](std::string& bytes) {
    return decoder->decodeSummary(bytes).entryCount;
  };
}

Decode keepingRecords() {
  return [decoder = std::make_shared<ManifestDecoder>()](std::string& bytes) {
    return decoder->decode(bytes).entries.size();
  };
}

Decode nlohmannTree() {
  return [](std::string& bytes) { return nlohmann::json::parse(bytes).at("entries").size(); };
}

Decode nlohmannRecords() {
  return
      [](std::string& bytes) { return plainManifest(nlohmann::json::parse(bytes)).entries.size(); };
}

Decode rapidJSONDOM() {
  return [](std::string& bytes) -> std::size_t {
    rapidjson::Document manifest;
    manifest.Parse(bytes.data(), bytes.size());
    if (manifest.HasParseError()) {
      throw std::invalid_argument("RapidJSON refuses the manifest");
    }
    return manifest["entries"].Size();
  };
}

constexpr Candidate candidates[] = {
    {"simdjson-dom", simdjsonDOM},         {"checked", checkingOnly},
    {"records", keepingRecords},           {"nlohmann", nlohmannTree},
    {"nlohmann-records", nlohmannRecords}, {"rapidjson", rapidJSONDOM},
};

}  // namespace

std::span<const Candidate> decodingCandidates() { return candidates; }

}  // namespace velmora
