// Two readers share the work. The StreamingManifestReader reads manifests in the form that the
// application writes, in one pass over chunks of the document, and gives up at others. The
// DiagnosingManifestReader then reads the whole document again: it accepts everything that is
// valid, and raises the first fault of what is not. Both hand their entries to a product: a whole
// manifest, or a summary.
#include "warpshared/reading/ManifestDecoding.h"

#include "json/streaming/ChunkedDocument.h"
#include "json/strict/JSONReader.h"
#include "platform/FileReader.h"
#include "warpshared/reading/DiagnosingManifestReader.h"
#include "warpshared/reading/StreamingManifestReader.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace velmora {

static_assert(maxSharedWarpManifestLength == internal::maxJSONDocumentLength);

namespace {

/// Makes a manifest, in the memory of another one.
class WholeManifest {
 public:
  explicit WholeManifest(VelmoraWarpSharedManifest& manifest)
      : manifest_(manifest), entries_(std::move(manifest.entries)) {}

  void begin() { entries_.clear(); }

  void add(const WarpSharedEntry<TextView>& entry) { entries_.append(entry); }

  void finish(internal::DecodedHeader&& header) {
    manifest_ = std::move(header.manifest);
    manifest_.verificationSampleRelativePaths =
        std::vector<Text>(header.samples.begin(), header.samples.end());
    manifest_.entries = std::move(entries_);
  }

 private:
  VelmoraWarpSharedManifest& manifest_;
  WarpSharedEntries entries_;
};

class Summary {
 public:
  explicit Summary(ManifestSummary& summary) : summary_(summary) {}

  void begin() { entryCount_ = 0; }

  void add(const WarpSharedEntry<TextView>&) { ++entryCount_; }

  void finish(internal::DecodedHeader&& header) const {
    summary_ = {.warpID = std::move(header.manifest.warpID),
                .manifestKey = std::move(header.manifest.manifestKey),
                .originalFolderPath = std::move(header.manifest.originalFolderPath),
                .createdAt = header.manifest.createdAt,
                .status = header.manifest.status,
                .entryCount = entryCount_,
                .sampleCount = header.samples.size()};
  }

 private:
  ManifestSummary& summary_;
  std::size_t entryCount_ = 0;
};

}  // namespace

class ManifestDecoder::Readers {
 public:
  template <class Product>
  void decode(std::string& bytes, Product product) {
    if (bytes.size() > maxSharedWarpManifestLength ||
        !stream(internal::ChunkedDocument(bytes, chunkBuffer_), product)) {
      diagnose(bytes, product);
    }
  }

  template <class Product>
  void read(const Text& path, const FileReader& files, Product product) {
    if (stream(openChunked(path, files), product)) {
      return;
    }
    // A large chunk is not to lie beside the whole document.
    constexpr std::size_t usualChunkMemory = 4 * internal::documentChunkLength;
    if (chunkBuffer_.size > usualChunkMemory) {
      chunkBuffer_ = internal::ChunkBuffer();
    }
    std::string bytes = files.read(path, maxSharedWarpManifestLength);
    diagnose(bytes, product);
  }

 private:
  /// False when the streaming reader gives up.
  template <class Product>
  bool stream(internal::ChunkedDocument&& document, Product& product) {
    product.begin();
    std::optional<internal::DecodedHeader> header =
        streamingReader_.read(document, [&product](const auto& entry) { product.add(entry); });
    if (!header.has_value()) {
      return false;
    }
    product.finish(*std::move(header));
    return true;
  }

  template <class Product>
  void diagnose(std::string& bytes, Product& product) {
    product.begin();
    product.finish(
        diagnosingReader_.read(bytes, [&product](const auto& entry) { product.add(entry); }));
  }

  internal::ChunkedDocument openChunked(const Text& path, const FileReader& files) {
    const std::shared_ptr<FileContent> file = files.open(path, maxSharedWarpManifestLength);
    return {[file](char* room, std::size_t size) { return file->read(room, size); }, chunkBuffer_};
  }

  internal::ChunkBuffer chunkBuffer_;
  internal::StreamingManifestReader streamingReader_;
  internal::DiagnosingManifestReader diagnosingReader_;
};

ManifestDecoder::ManifestDecoder() : readers_(std::make_unique<Readers>()) {}

ManifestDecoder::~ManifestDecoder() = default;

void ManifestDecoder::decode(std::string& bytes, VelmoraWarpSharedManifest& manifest) {
  readers_->decode(bytes, WholeManifest(manifest));
}

VelmoraWarpSharedManifest ManifestDecoder::decode(std::string& bytes) {
  VelmoraWarpSharedManifest manifest;
  decode(bytes, manifest);
  return manifest;
}

ManifestSummary ManifestDecoder::decodeSummary(std::string& bytes) {
  ManifestSummary summary;
  readers_->decode(bytes, Summary(summary));
  return summary;
}

VelmoraWarpSharedManifest ManifestDecoder::read(const Text& path, const FileReader& files) {
  VelmoraWarpSharedManifest manifest;
  readers_->read(path, files, WholeManifest(manifest));
  return manifest;
}

ManifestSummary ManifestDecoder::readSummary(const Text& path, const FileReader& files) {
  ManifestSummary summary;
  readers_->read(path, files, Summary(summary));
  return summary;
}

}  // namespace velmora
