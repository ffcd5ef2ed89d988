#include "warpshared/reading/StreamingManifestReader.h"

#include "json/streaming/StreamingRecordReader.h"
#include "json/streaming/TextArena.h"
#include "text/CanonicalTextSet.h"
#include "text/UniquenessCheck.h"
#include "warpshared/records/EntryFields.h"
#include "warpshared/records/FieldCodecs.h"
#include "warpshared/records/ManifestFields.h"
#include "warpshared/rules/CommonAncestor.h"
#include "warpshared/rules/EntryRules.h"
#include "warpshared/rules/ManifestRules.h"
#include "warpshared/rules/OriginalFolder.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace velmora::internal {

namespace {

using Manifest = VelmoraWarpSharedManifest;
using EntryView = WarpSharedEntry<TextView>;

/// What is to be known of entries when all of them have been read.
class EntrySetChecks {
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

  /// Whether every entry has a path of its own, in `folder`. Clears the paths.
  [[nodiscard]] bool areOwned(const OriginalFolder& folder) {
    return paths_.allDistinct() && folder_.isBelow(folder);
  }

  /// Whether every hard link leads to an entry that has an identity, too.
  [[nodiscard]] bool areHardLinksInside() const {
    return std::ranges::all_of(primaryPaths_,
                               [this](TextView path) { return linkedPaths_.contains(path); });
  }

 private:
  UniquenessCheck paths_;
  CommonAncestor folder_;
  CanonicalTextSet linkedPaths_;
  std::vector<TextView> primaryPaths_;
};

bool areSamplesOwned(const std::vector<TextView>& samples, const OriginalFolder& folder,
                     UniquenessCheck& paths) {
  paths.clear();
  for (const TextView sample : samples) {
    if (!isSampleOwned(sample, folder)) {
      return false;
    }
    paths.add(sample);
  }
  return paths.allDistinct();
}

}  // namespace

class StreamingManifestReader::ParserState {
 public:
  StreamingRecordReader<Manifest, EntryView, WarpSharedPayloadPart<TextView>,
                        VelmoraWarpSharedSparseExtent, VelmoraWarpSharedHardLinkIdentity,
                        WarpSharedExtendedAttribute<TextView>>
      reader;
  EntryView entry;
  std::vector<TextView> samples;
  EntrySetChecks entries;
  UniquenessCheck samplePaths;
  /// Of the chunk at hand.
  TextArena chunkTexts;
  /// Of the whole document.
  TextArena documentTexts;
};

namespace {

/// Parses one manifest, unit by unit. A unit is a member, or in the list of entries an entry.
/// Nothing is known beyond the chunk's end: a unit cut off there is parsed again from the next
/// chunk.
template <class ParserState>
class StreamingParse {
 public:
  StreamingParse(ParserState& state, ChunkedDocument& document, const EntryVisitor& visitEntry)
      : state_(state), document_(document), visitEntry_(visitEntry) {}

  std::optional<DecodedHeader> run() {
    state_.entries.clear();
    state_.samples.clear();
    state_.documentTexts.clear();
    std::size_t unreadLength = 0;
    do {
      if (!document_.advance(unreadLength)) {
        return std::nullopt;
      }
      state_.chunkTexts.clear();
      TokenCursor tokens(document_.text(), document_.tokens(), state_.chunkTexts);
      if (!readUnits(tokens, unreadLength)) {
        return std::nullopt;
      }
    } while (!document_.isLast());
    if (place_ != Place::behindManifest || !satisfiesManifestRules()) {
      return std::nullopt;
    }
    return DecodedHeader{.manifest = std::move(manifest_), .samples = state_.samples};
  }

 private:
  enum class Place { inManifest, inEntries, behindManifest };

  bool readUnits(TokenCursor& tokens, std::size_t& unreadLength) {
    unreadLength = 0;
    while (!tokens.atEnd()) {
      const std::size_t beforeUnit = tokens.remaining();
      if (!readUnit(tokens)) {
        unreadLength = beforeUnit;
        return !hasDoubt_ && tokens.atEnd() && !document_.isLast();
      }
    }
    return true;
  }

  bool readUnit(TokenCursor& tokens) {
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

  bool readMember(TokenCursor& tokens) {
    const std::size_t field = state_.reader.template takeMemberStart<Manifest>(tokens, lastField_);
    switch (field) {
      case fieldIndex<Manifest, "entries">:
        return beginEntries(tokens);
      case fieldIndex<Manifest, "rootMetadata">:
        return readRoot(tokens) && endMember(tokens, field);
      case fieldIndex<Manifest, "verificationSampleAbsolutePaths">:
        return readSamples(tokens) && endMember(tokens, field);
      default:
        return state_.reader.readField(tokens, manifest_, field) && endMember(tokens, field);
    }
  }

  /// What ends a member is left to the next one, but for the end of all.
  bool endMember(TokenCursor& tokens, std::size_t field) {
    const bool isLast = tokens.take('}');
    if (!isLast && !tokens.isNext(',')) {
      return false;
    }
    place_ = isLast ? Place::behindManifest : Place::inManifest;
    lastField_ = field;
    presentFields_.add(field);
    hasDoubt_ = isLast && !presentFields_.finish(manifest_);
    return !hasDoubt_;
  }

  bool readEntry(TokenCursor& tokens) {
    return state_.reader.read(tokens, state_.entry) && satisfiesEntryRules(state_.entry);
  }

  bool readRoot(TokenCursor& tokens) {
    if (!readEntry(tokens)) {
      return false;
    }
    manifest_.rootMetadata = ownedEntry(state_.entry);
    return true;
  }

  bool readSamples(TokenCursor& tokens) {
    if (!state_.reader.read(tokens, state_.samples)) {
      return false;
    }
    for (TextView& sample : state_.samples) {
      sample = state_.documentTexts.copy(sample);
    }
    return true;
  }

  bool beginEntries(TokenCursor& tokens) {
    // Where the chunk ends here, the list may yet be empty.
    if (!tokens.take('[') || tokens.atEnd()) {
      return false;
    }
    if (tokens.take(']')) {
      return endMember(tokens, fieldIndex<Manifest, "entries">);
    }
    place_ = Place::inEntries;
    return true;
  }

  bool readListedEntry(TokenCursor& tokens) {
    if (!readEntry(tokens)) {
      return false;
    }
    const bool isLast = tokens.take(']');
    if (isLast ? !endMember(tokens, fieldIndex<Manifest, "entries">) : !tokens.take(',')) {
      return false;
    }
    visitEntry_(state_.entry);
    hasDoubt_ = !state_.entries.add(state_.entry, state_.documentTexts);
    return !hasDoubt_;
  }

  bool satisfiesManifestRules() {
    const OriginalFolder folder(manifest_.originalFolderPath);
    const ManifestFacts facts{
        .manifest = manifest_,
        .areEntriesOwned = state_.entries.areOwned(folder),
        .areSamplesOwned = areSamplesOwned(state_.samples, folder, state_.samplePaths),
        .areHardLinksInside = state_.entries.areHardLinksInside()};
    return std::ranges::all_of(manifestRules(),
                               [&facts](const ManifestRule& rule) { return rule.holds(facts); });
  }

  ParserState& state_;
  ChunkedDocument& document_;
  const EntryVisitor& visitEntry_;
  Manifest manifest_;
  PresentFields<Manifest> presentFields_;
  std::size_t lastField_ = fieldCount<Manifest>;
  Place place_ = Place::inManifest;
  /// Of a unit that was whole.
  bool hasDoubt_ = false;
};

}  // namespace

StreamingManifestReader::StreamingManifestReader() : state_(std::make_unique<ParserState>()) {}

StreamingManifestReader::~StreamingManifestReader() = default;

StreamingManifestReader::StreamingManifestReader(StreamingManifestReader&&) noexcept = default;

StreamingManifestReader& StreamingManifestReader::operator=(StreamingManifestReader&&) noexcept =
    default;

std::optional<DecodedHeader> StreamingManifestReader::read(ChunkedDocument& document,
                                                           const EntryVisitor& visitEntry) {
  return StreamingParse(*state_, document, visitEntry).run();
}

}  // namespace velmora::internal
