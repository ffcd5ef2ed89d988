#include "bench/Candidates.h"

#include "bench/PlainRecords.h"
#include "platform/PlatformError.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixFileReader.h"
#include "warpshared/reading/ManifestDecoding.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <simdjson.h>

#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <rapidjson/document.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <stdexcept>
#include <vector>

namespace velmora {
namespace {

// The yardstick: checks syntax and UTF-8, and builds a tree of the values, which nobody reads.
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
  return [decoder = std::make_shared<ManifestDecoder>(),
          manifest = std::make_shared<VelmoraWarpSharedManifest>()](std::string& bytes) {
    decoder->decode(bytes, *manifest);
    return manifest->entries.size();
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

// Decodes nothing, so it measures the copy that all candidates get.
Decode nothing() {
  return [](std::string& bytes) { return bytes.size(); };
}

// The lower bound for candidates that read files: reads into one buffer, and nobody looks at the
// bytes.
ReadAndDecode readingOnly() {
  constexpr std::size_t bufferLength = 1 << 20;
  return [buffer = std::make_shared<std::vector<char>>(bufferLength)](const Text& path) {
    const FileDescriptor file =
        FileDescriptor::adopt(::open(path.utf8().c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) {
      throw posixError(errno);
    }
    std::size_t byteCount = 0;
    ssize_t length = 0;
    while ((length = ::read(file.get(), buffer->data(), buffer->size())) > 0) {
      byteCount += static_cast<std::size_t>(length);
    }
    if (length < 0) {
      throw posixError(errno);
    }
    return byteCount;
  };
}

// Reads files as the actions read the mirror.
ReadAndDecode readingAndChecking() {
  return [files = std::make_shared<PosixFileReader>(),
          decoder = std::make_shared<ManifestDecoder>()](const Text& path) {
    return decoder->readSummary(path, *files).entryCount;
  };
}

ReadAndDecode readingAndKeepingRecords() {
  return [files = std::make_shared<PosixFileReader>(),
          decoder = std::make_shared<ManifestDecoder>()](const Text& path) {
    return decoder->read(path, *files).entries.size();
  };
}

template <class Function>
struct Named {
  std::string_view name;
  Function (*make)();
};

constexpr Named<Decode> fromMemory[] = {
    {"simdjson-dom", simdjsonDOM},
    {"checked", checkingOnly},
    {"records", keepingRecords},
    {"nlohmann", nlohmannTree},
    {"nlohmann-records", nlohmannRecords},
    {"rapidjson", rapidJSONDOM},
    {"nothing", nothing},
};

constexpr Named<ReadAndDecode> fromFiles[] = {
    {"read-only", readingOnly},
    {"read-checked", readingAndChecking},
    {"read-records", readingAndKeepingRecords},
};

}  // namespace

Candidate candidateNamed(std::string_view name) {
  for (const Named<Decode>& candidate : fromMemory) {
    if (candidate.name == name) {
      return candidate.make();
    }
  }
  for (const Named<ReadAndDecode>& candidate : fromFiles) {
    if (candidate.name == name) {
      return candidate.make();
    }
  }
  throw std::invalid_argument("there is no candidate " + std::string(name));
}

}  // namespace velmora
