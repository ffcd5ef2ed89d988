#include "warpshared/ManifestDecoding.h"

#include "platform/FileReader.h"

#include <memory>
#include <utility>

namespace velmora {

namespace {

/// Makes a manifest of what a reader gives.
class WholeManifest {
 public:
  using Result = VelmoraWarpSharedManifest;

  void use(const WarpSharedEntry<TextView>& entry) { entries_.push_back(ownedEntry(entry)); }

  Result finish(ReadManifest&& read) {
    read.manifest.verificationSampleRelativePaths =
        std::vector<Text>(read.samples.begin(), read.samples.end());
    read.manifest.entries = std::move(entries_);
    return std::move(read.manifest);
  }

 private:
  std::vector<VelmoraWarpSharedEntry> entries_;
};

class Summary {
 public:
  using Result = ManifestSummary;

  void use(const WarpSharedEntry<TextView>&) { ++entryCount_; }

  Result finish(ReadManifest&& read) const {
    return {.warpID = std::move(read.manifest.warpID),
            .manifestKey = std::move(read.manifest.manifestKey),
            .originalFolderPath = std::move(read.manifest.originalFolderPath),
            .createdAt = read.manifest.createdAt,
            .status = read.manifest.status,
            .entryCount = entryCount_,
            .sampleCount = read.samples.size()};
  }

 private:
  std::size_t entryCount_ = 0;
};

}  // namespace

template <class Product>
std::optional<typename Product::Result> ManifestDecoder::accept(DocumentPieces&& pieces) {
  Product product;
  std::optional<ReadManifest> read =
      quickReader_.read(pieces, [&product](const auto& entry) { product.use(entry); });
  if (!read.has_value()) {
    return std::nullopt;
  }
  return product.finish(*std::move(read));
}

template <class Product>
typename Product::Result ManifestDecoder::reconsider(std::string& bytes) {
  ++reconsideredCount_;
  Product product;
  return product.finish(
      exactReader_.read(bytes, [&product](const auto& entry) { product.use(entry); }));
}

template <class Product>
typename Product::Result ManifestDecoder::decodeAs(std::string& bytes) {
  if (bytes.size() <= longestSharedWarpManifest) {
    std::optional<typename Product::Result> result =
        accept<Product>(DocumentPieces(bytes, pieceMemory_));
    if (result.has_value()) {
      return *std::move(result);
    }
  }
  return reconsider<Product>(bytes);
}

template <class Product>
typename Product::Result ManifestDecoder::readAs(const Text& path, const FileReader& files) {
  if (std::optional<typename Product::Result> result = accept<Product>(piecesOf(path, files))) {
    return *std::move(result);
  }
  std::string bytes = files.read(path, longestSharedWarpManifest);
  return reconsider<Product>(bytes);
}

DocumentPieces ManifestDecoder::piecesOf(const Text& path, const FileReader& files) {
  const std::shared_ptr<FileContent> file = files.open(path, longestSharedWarpManifest);
  return {[file](char* room, std::size_t size) { return file->read(room, size); }, pieceMemory_};
}

VelmoraWarpSharedManifest ManifestDecoder::decode(std::string& bytes) {
  return decodeAs<WholeManifest>(bytes);
}

ManifestSummary ManifestDecoder::decodeSummary(std::string& bytes) {
  return decodeAs<Summary>(bytes);
}

VelmoraWarpSharedManifest ManifestDecoder::read(const Text& path, const FileReader& files) {
  return readAs<WholeManifest>(path, files);
}

ManifestSummary ManifestDecoder::readSummary(const Text& path, const FileReader& files) {
  return readAs<Summary>(path, files);
}

}  // namespace velmora
