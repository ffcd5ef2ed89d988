#include "warpshared/QuickManifestReader.h"

#include "json/QuickReader.h"
#include "json/TextArena.h"
#include "text/CanonicalTextSet.h"
#include "text/DistinctTexts.h"
#include "warpshared/ManifestRules.h"
#include "warpshared/OriginalFolder.h"
#include "warpshared/PathPredicates.h"
#include "warpshared/RecordValues.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace velmora {

namespace {

using Manifest = VelmoraWarpSharedManifest;
using EntryView = WarpSharedEntry<TextView>;

/// What is to be known of entries when all of them have been read.
class SeenEntries {
 public:
  void clear() {
    paths_.clear();
    folder_.clear();
    linkedPaths_.clear();
    primaryPaths_.clear();
  }

  /// False where nothing can be told of them any more. `texts` keeps what must be kept.
  [[nodiscard]] bool add(const EntryView& entry, TextArena& texts) {
    paths_.add(entry.relativePath);
    // The application says of every path of a file with several that it is such a path.
    if (entry.hardLinkIdentity.has_value()) {
      linkedPaths_.insert(texts.copy(entry.relativePath));
    }
    if (entry.hardLinkPrimaryPath.has_value()) {
      if (*entry.hardLinkPrimaryPath == entry.relativePath) {
        return false;
      }
      primaryPaths_.push_back(texts.copy(*entry.hardLinkPrimaryPath));
    }
    return folder_.add(entry.relativePath);
  }

  /// Whether each path is there once and below the folder, and all links lead to such paths.
  [[nodiscard]] bool areConsistent(const OriginalFolder& folder) {
    return paths_.takeVerdict() && folder_.isBelow(folder) &&
           std::ranges::all_of(primaryPaths_,
                               [this](TextView path) { return linkedPaths_.contains(path); });
  }

 private:
  DistinctTexts paths_;
  CommonFolder folder_;
  CanonicalTextSet linkedPaths_;
  std::vector<TextView> primaryPaths_;
};

bool areSamplesConsistent(const std::vector<TextView>& samples, const OriginalFolder& folder,
                          DistinctTexts& paths) {
  paths.clear();
  for (const TextView sample : samples) {
    if (!isCanonicalAbsolutePath(sample) || !folder.owns(sample)) {
      return false;
    }
    paths.add(sample);
  }
  return paths.takeVerdict();
}

}  // namespace

class QuickManifestReader::Memory {
 public:
  QuickReader<Manifest, EntryView, WarpSharedPayloadPart<TextView>, VelmoraWarpSharedSparseExtent,
              VelmoraWarpSharedHardLinkIdentity, WarpSharedExtendedAttribute<TextView>>
      reader;
  EntryView entry;
  std::vector<TextView> samples;
  SeenEntries entries;
  DistinctTexts samplePaths;
  /// Of the piece at hand.
  TextArena pieceTexts;
  /// Of the whole document.
  TextArena documentTexts;
};

namespace {

/// Reads one manifest, unit by unit: each of its members, but of the list of entries each entry. Of
/// what lies behind a piece's end is known no more than that it is not there; a unit that is not
/// whole is read again with the next piece.
template <class Memory>
class Walk {
 public:
  Walk(Memory& memory, DocumentPieces& pieces, const UseEntry& useEntry)
      : memory_(memory), pieces_(pieces), useEntry_(useEntry) {}

  std::optional<ReadManifest> run() {
    memory_.entries.clear();
    memory_.samples.clear();
    memory_.documentTexts.clear();
    std::size_t unreadLength = 0;
    do {
      if (!pieces_.advance(unreadLength)) {
        return std::nullopt;
      }
      memory_.pieceTexts.clear();
      QuickTokens tokens(pieces_.text(), pieces_.tokens(), memory_.pieceTexts);
      if (!readUnits(tokens, unreadLength)) {
        return std::nullopt;
      }
    } while (!pieces_.isLast());
    if (place_ != Place::behindManifest || !isConsistent()) {
      return std::nullopt;
    }
    return ReadManifest{.manifest = std::move(manifest_), .samples = memory_.samples};
  }

 private:
  enum class Place { inManifest, inEntries, behindManifest };

  bool readUnits(QuickTokens& tokens, std::size_t& unreadLength) {
    unreadLength = 0;
    while (!tokens.atEnd()) {
      const std::size_t beforeUnit = tokens.remaining();
      if (!readUnit(tokens)) {
        unreadLength = beforeUnit;
        return !hasDoubt_ && tokens.atEnd() && !pieces_.isLast();
      }
    }
    return true;
  }

  bool readUnit(QuickTokens& tokens) {
    switch (place_) {
      case Place::inManifest:
        return readMember(tokens);
      case Place::inEntries:
        return readListedEntry(tokens);
      case Place::behindManifest:
        break;
    }
    return false;
  }

  bool readMember(QuickTokens& tokens) {
    const std::size_t field = memory_.reader.template takeMemberStart<Manifest>(tokens, lastField_);
    switch (field) {
      case fieldIndex<Manifest, "entries">:
        return beginEntries(tokens);
      case fieldIndex<Manifest, "rootMetadata">:
        return readRoot(tokens) && endMember(tokens, field);
      case fieldIndex<Manifest, "verificationSampleAbsolutePaths">:
        return readSamples(tokens) && endMember(tokens, field);
      default:
        return memory_.reader.readField(tokens, manifest_, field) && endMember(tokens, field);
    }
  }

  /// What ends a member is left to the next one, but for the end of all.
  bool endMember(QuickTokens& tokens, std::size_t field) {
    const bool isLast = tokens.take('}');
    if (!isLast && !tokens.isNext(',')) {
      return false;
    }
    place_ = isLast ? Place::behindManifest : Place::inManifest;
    lastField_ = field;
    seenFields_.add(field);
    hasDoubt_ = isLast && !seenFields_.finish(manifest_);
    return !hasDoubt_;
  }

  bool readEntry(QuickTokens& tokens) {
    return memory_.reader.read(tokens, memory_.entry) && isAcceptable(memory_.entry);
  }

  bool readRoot(QuickTokens& tokens) {
    if (!readEntry(tokens)) {
      return false;
    }
    manifest_.rootMetadata = ownedEntry(memory_.entry);
    return true;
  }

  bool readSamples(QuickTokens& tokens) {
    if (!memory_.reader.read(tokens, memory_.samples)) {
      return false;
    }
    for (TextView& sample : memory_.samples) {
      sample = memory_.documentTexts.copy(sample);
    }
    return true;
  }

  bool beginEntries(QuickTokens& tokens) {
    // Where the piece ends here, the list may yet be empty.
    if (!tokens.take('[') || tokens.atEnd()) {
      return false;
    }
    if (tokens.take(']')) {
      return endMember(tokens, fieldIndex<Manifest, "entries">);
    }
    place_ = Place::inEntries;
    return true;
  }

  bool readListedEntry(QuickTokens& tokens) {
    if (!readEntry(tokens)) {
      return false;
    }
    const bool isLast = tokens.take(']');
    if (isLast ? !endMember(tokens, fieldIndex<Manifest, "entries">) : !tokens.take(',')) {
      return false;
    }
    useEntry_(memory_.entry);
    hasDoubt_ = !memory_.entries.add(memory_.entry, memory_.documentTexts);
    return !hasDoubt_;
  }

  bool isConsistent() {
    const OriginalFolder folder(manifest_.originalFolderPath);
    return manifest_.version == sharedWarpManifestVersion && isIdentitySafe(manifest_) &&
           areDatesFinite(manifest_) &&
           manifest_.rootMetadata.relativePath == manifest_.originalFolderPath &&
           memory_.entries.areConsistent(folder) &&
           areSamplesConsistent(memory_.samples, folder, memory_.samplePaths);
  }

  Memory& memory_;
  DocumentPieces& pieces_;
  const UseEntry& useEntry_;
  Manifest manifest_;
  SeenFields<Manifest> seenFields_;
  std::size_t lastField_ = fieldCount<Manifest>;
  Place place_ = Place::inManifest;
  /// Of a unit that was whole.
  bool hasDoubt_ = false;
};

}  // namespace

QuickManifestReader::QuickManifestReader() : memory_(std::make_unique<Memory>()) {}

QuickManifestReader::~QuickManifestReader() = default;

QuickManifestReader::QuickManifestReader(QuickManifestReader&&) noexcept = default;

QuickManifestReader& QuickManifestReader::operator=(QuickManifestReader&&) noexcept = default;

std::optional<ReadManifest> QuickManifestReader::read(DocumentPieces& pieces,
                                                      const UseEntry& useEntry) {
  return Walk(*memory_, pieces, useEntry).run();
}

}  // namespace velmora
