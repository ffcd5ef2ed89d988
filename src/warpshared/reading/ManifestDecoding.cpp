// Two readers share the work. The StreamingManifestReader reads chunks of the document, and accepts
// or refuses it. For a refused one, the DiagnosingManifestReader reads the whole document again,
// and raises the first fault. Both hand their entries to a product: a whole manifest, or a summary.
#include "warpshared/reading/ManifestDecoding.h"

#include "json/streaming/ChunkedDocument.h"
#include "warpshared/reading/DiagnosingManifestReader.h"
#include "warpshared/reading/StreamingManifestReader.h"

#include <cerrno>
#include <memory>
#include <optional>
#include <stdexcept>
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

  void begin() {
    entries_.clear();
    samples_.clear();
  }
  void add(const WarpSharedEntry<TextView>& entry) { entries_.append(entry); }
  void add(TextView sample) { samples_.emplace_back(sample); }

  void finish(VelmoraWarpSharedManifest&& manifest) {
    manifest_ = std::move(manifest);
    manifest_.verificationSampleRelativePaths = std::move(samples_);
    manifest_.entries = std::move(entries_);
  }

 private:
  VelmoraWarpSharedManifest& manifest_;
  WarpSharedEntries entries_;
  std::vector<Text> samples_;
};

class Summary {
 public:
  explicit Summary(ManifestSummary& summary) : summary_(summary) {}

  void begin() {
    entryCount_ = 0;
    sampleCount_ = 0;
  }
  void add(const WarpSharedEntry<TextView>&) { ++entryCount_; }
  void add(TextView) { ++sampleCount_; }

  void finish(VelmoraWarpSharedManifest&& manifest) const {
    summary_ = {.warpID = std::move(manifest.warpID),
                .manifestKey = std::move(manifest.manifestKey),
                .originalFolderPath = std::move(manifest.originalFolderPath),
                .createdAt = manifest.createdAt,
                .status = manifest.status,
                .entryCount = entryCount_,
                .sampleCount = sampleCount_};
  }

 private:
  ManifestSummary& summary_;
  std::size_t entryCount_ = 0;
  std::size_t sampleCount_ = 0;
};

template <class Product>
internal::ManifestVisitor visitorOf(Product& product) {
  return {.begin = [&product] { product.begin(); },
          .sample = [&product](TextView sample) { product.add(sample); },
          .entry = [&product](const auto& entry) { product.add(entry); }};
}

}  // namespace

class ManifestDecoder::Readers {
 public:
  template <class Product>
  void decode(std::string& bytes, Product product) {
    const auto open = [&] {
      return std::make_unique<internal::ChunkedDocument>(bytes, chunkBuffer_);
    };
    try {
      if (bytes.size() <= maxSharedWarpManifestLength && stream(open, product)) {
        return;
      }
    } catch (const std::length_error&) {
      // The document is in memory already, so the rest of the memory does not matter.
    }
    diagnose(bytes, product);
  }

  /// False if the file is no valid manifest.
  template <class Product>
  bool accept(const Text& path, const FileReader& files, Product product) {
    releaseMemoryOfLargeFile();
    const auto open = [&] {
      const std::shared_ptr<FileContent> file = files.open(path, maxSharedWarpManifestLength);
      return std::make_unique<internal::ChunkedDocument>(
          [file, this](char* room, std::size_t size) {
            const std::size_t count = file->read(room, size);
            readLength_ += count;
            return count;
          },
          chunkBuffer_);
    };
    try {
      return stream(open, product);
    } catch (const std::length_error&) {
      throw posixError(EFBIG);
    }
  }

  template <class Product>
  void read(const Text& path, const FileReader& files, std::size_t maxDiagnosedLength,
            Product product) {
    if (accept(path, files, product)) {
      return;
    }
    // The memory of the first reader is not to lie beside the whole document.
    releaseMemoryOfLargeFile();
    std::string bytes = readDiagnosedFile(path, files, maxDiagnosedLength);
    diagnose(bytes, product);
  }

 private:
  static std::string readDiagnosedFile(const Text& path, const FileReader& files,
                                       std::size_t maxLength) {
    try {
      return files.read(path, maxLength);
    } catch (const PlatformError& error) {
      if (error.code() != EFBIG || maxLength == maxSharedWarpManifestLength) {
        throw;
      }
      throw DecodingError(DecodingErrorKind::dataCorrupted,
                          "The file is no valid manifest. It is too long to look for its fault.",
                          std::nullopt);
    }
  }

  /// Only memory that one file after the other can use is kept.
  void releaseMemoryOfLargeFile() {
    constexpr std::size_t largeFile = 16 * internal::documentChunkLength;
    if (std::exchange(readLength_, 0) > largeFile) {
      chunkBuffer_ = internal::ChunkBuffer();
      streamingReader_ = internal::StreamingManifestReader();
    }
  }

  /// False if the document is no valid manifest.
  template <class Product>
  bool stream(const internal::StreamingManifestReader::OpenDocument& open, Product& product) {
    std::optional<VelmoraWarpSharedManifest> manifest =
        streamingReader_.read(open, visitorOf(product));
    if (!manifest.has_value()) {
      return false;
    }
    product.finish(*std::move(manifest));
    return true;
  }

  template <class Product>
  void diagnose(std::string& bytes, Product& product) {
    product.finish(diagnosingReader_.read(bytes, visitorOf(product)));
  }

  /// The number of bytes that were read from the last file.
  std::size_t readLength_ = 0;
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
  readers_->read(path, files, maxSharedWarpManifestLength, WholeManifest(manifest));
  return manifest;
}

ManifestSummary ManifestDecoder::readSummary(const Text& path, const FileReader& files,
                                             std::size_t maxDiagnosedLength) {
  ManifestSummary summary;
  readers_->read(path, files, maxDiagnosedLength, Summary(summary));
  return summary;
}

std::optional<ManifestSummary> ManifestDecoder::readSummaryIfValid(const Text& path,
                                                                   const FileReader& files) {
  ManifestSummary summary;
  return readers_->accept(path, files, Summary(summary)) ? std::optional(std::move(summary))
                                                         : std::nullopt;
}

}  // namespace velmora
