#include "warpshared/ManifestDecoding.h"

#include "platform/FileReader.h"

#include <memory>
#include <utility>

namespace velmora {

/// Makes a manifest of what a reader gives, in the memory of another one.
class ManifestDecoder::WholeManifest {
 public:
  explicit WholeManifest(VelmoraWarpSharedManifest& manifest)
      : manifest_(manifest), entries_(std::move(manifest.entries)) {}

  void begin() { entries_.clear(); }

  void use(const WarpSharedEntry<TextView>& entry) { entries_.append(entry); }

  void finish(DecodedHeader&& read) {
    manifest_ = std::move(read.manifest);
    manifest_.verificationSampleRelativePaths =
        std::vector<Text>(read.samples.begin(), read.samples.end());
    manifest_.entries = std::move(entries_);
  }

 private:
  VelmoraWarpSharedManifest& manifest_;
  WarpSharedEntries entries_;
};

/// Sums up what a reader gives.
class ManifestDecoder::Summary {
 public:
  explicit Summary(ManifestSummary& summary) : summary_(summary) {}

  void begin() { entryCount_ = 0; }

  void use(const WarpSharedEntry<TextView>&) { ++entryCount_; }

  void finish(DecodedHeader&& read) const {
    summary_ = {.warpID = std::move(read.manifest.warpID),
                .manifestKey = std::move(read.manifest.manifestKey),
                .originalFolderPath = std::move(read.manifest.originalFolderPath),
                .createdAt = read.manifest.createdAt,
                .status = read.manifest.status,
                .entryCount = entryCount_,
                .sampleCount = read.samples.size()};
  }

 private:
  ManifestSummary& summary_;
  std::size_t entryCount_ = 0;
};

template <class Product>
bool ManifestDecoder::accept(ChunkedDocument&& document, Product& product) {
  product.begin();
  std::optional<DecodedHeader> read =
      streamingReader_.read(document, [&product](const auto& entry) { product.use(entry); });
  if (!read.has_value()) {
    return false;
  }
  product.finish(*std::move(read));
  return true;
}

template <class Product>
void ManifestDecoder::decodeExactly(std::string& bytes, Product& product) {
  ++reconsideredCount_;
  product.begin();
  product.finish(
      diagnosingReader_.read(bytes, [&product](const auto& entry) { product.use(entry); }));
}

template <class Product>
void ManifestDecoder::decodeAs(std::string& bytes, Product product) {
  if (bytes.size() > maxSharedWarpManifestLength ||
      !accept(ChunkedDocument(bytes, chunkBuffer_), product)) {
    decodeExactly(bytes, product);
  }
}

template <class Product>
void ManifestDecoder::readAs(const Text& path, const FileReader& files, Product product) {
  if (accept(chunkedDocumentOf(path, files), product)) {
    return;
  }
  // A large chunk is not to lie beside the whole document.
  constexpr std::size_t usualChunkMemory = 4 * documentChunkLength;
  if (chunkBuffer_.size > usualChunkMemory) {
    chunkBuffer_ = ChunkBuffer();
  }
  std::string bytes = files.read(path, maxSharedWarpManifestLength);
  decodeExactly(bytes, product);
}

ChunkedDocument ManifestDecoder::chunkedDocumentOf(const Text& path, const FileReader& files) {
  const std::shared_ptr<FileContent> file = files.open(path, maxSharedWarpManifestLength);
  return {[file](char* room, std::size_t size) { return file->read(room, size); }, chunkBuffer_};
}

void ManifestDecoder::decode(std::string& bytes, VelmoraWarpSharedManifest& manifest) {
  decodeAs(bytes, WholeManifest(manifest));
}

VelmoraWarpSharedManifest ManifestDecoder::decode(std::string& bytes) {
  VelmoraWarpSharedManifest manifest;
  decode(bytes, manifest);
  return manifest;
}

ManifestSummary ManifestDecoder::decodeSummary(std::string& bytes) {
  ManifestSummary summary;
  decodeAs(bytes, Summary(summary));
  return summary;
}

VelmoraWarpSharedManifest ManifestDecoder::read(const Text& path, const FileReader& files) {
  VelmoraWarpSharedManifest manifest;
  readAs(path, files, WholeManifest(manifest));
  return manifest;
}

ManifestSummary ManifestDecoder::readSummary(const Text& path, const FileReader& files) {
  ManifestSummary summary;
  readAs(path, files, Summary(summary));
  return summary;
}

}  // namespace velmora
