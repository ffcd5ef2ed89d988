// Parses a manifest unit by unit. A unit is a member of the manifest, or an entry of its list of
// entries. The state between two units is small: the fields so far, and whether the list of entries
// is open. So the parse can stop after any unit and continue in the next chunk of the document.
//
// An example, with fewer fields than a manifest has, and a chunk length of 40:
//
//   offset    0         10        20        30        40
//             |         |         |         |         |
//   document  {"version":4,"entries":[{"size":1},{"size":2}]}
//   chunk 1   {"version":4,"entries":[{"size":1},              0 to 35, ends after the last `},`
//   chunk 2                                      {"size":2}]}  35 to 47, the last one
//
//   chunk 1: tokens begin at 0 1 10 11 12 13 22 23 24 25 31 32 33 34, then four sentinels 35
//     inManifest     0 1 10     {"version":    the predictor finds the field `version`
//                    11         4              readField
//                    (12        ,              endMember sees that another member follows)
//     inManifest     12 13 22   ,"entries":    the predictor finds the field `entries`
//                    23         [              beginEntries opens the list
//     inEntries      24 ... 33  {"size":1}     readEntry, and all rules of an entry
//                    34         ,              the entry goes to the visitor
//     The next token is a sentinel: the chunk is read.
//   chunk 2: tokens begin at 0 1 7 8 9 10 11 (35 in the document), then four sentinels 12
//     inEntries      0 ... 9    {"size":2}     as above
//                    10         ]              closes the list
//                    11         }              ends the manifest
//     afterManifest  Only blanks may follow. Last, the rules of the manifest are tested.
//
// A chunk may also end inside of a unit: at a line break, or between two objects of a list in an
// entry. The unit then fails at the sentinel. The reader then leaves the bytes of the unit unread,
// and the next chunk begins with them. A unit that fails before the sentinel, or in the last chunk,
// ends the parse: it gives up.
//
// Two rules concern all entries. A hash of each path is kept to tell that paths are distinct, and
// the common ancestor of all paths to tell that they are in the original folder, which may be read
// after the entries.
#include "warpshared/reading/StreamingManifestReader.h"

#include "json/streaming/StreamingRecordReader.h"
#include "json/streaming/TextArena.h"
#include "text/CanonicalTextSet.h"
#include "text/UniquenessCheck.h"
#include "warpshared/records/FieldCodecs.h"
#include "warpshared/records/FieldLists.h"
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

/// The facts about all entries, in memory that does not grow with their texts.
class EntrySetChecks {
 public:
  void clear() {
    paths_.clear();
    folder_.clear();
    linkedPaths_.clear();
    primaryPaths_.clear();
  }

  /// Adds an entry. False when the facts are no longer known. `texts` keeps the texts of links.
  [[nodiscard]] bool add(const EntryView& entry, TextArena& texts) {
    paths_.add(entry.relativePath);
    // The application writes the identity at every path of a file that has several paths.
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
  /// Texts of the current chunk.
  TextArena chunkTexts;
  /// Texts of the whole document.
  TextArena documentTexts;
};

namespace {

/// Parses one manifest.
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
    if (place_ != Place::afterManifest || !satisfiesManifestRules()) {
      return std::nullopt;
    }
    return DecodedHeader{.manifest = std::move(manifest_), .samples = state_.samples};
  }

 private:
  enum class Place { inManifest, inEntries, afterManifest };

  bool readUnits(TokenCursor& tokens, std::size_t& unreadLength) {
    unreadLength = 0;
    while (!tokens.atEnd()) {
      const std::size_t beforeUnit = tokens.remaining();
      if (!readUnit(tokens)) {
        unreadLength = beforeUnit;
        return !givesUp_ && tokens.atEnd() && !document_.isLast();
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
      case Place::afterManifest:
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

  /// Takes the end of the manifest. A comma is left to the next member.
  bool endMember(TokenCursor& tokens, std::size_t field) {
    const bool isLast = tokens.take('}');
    if (!isLast && !tokens.isNext(',')) {
      return false;
    }
    place_ = isLast ? Place::afterManifest : Place::inManifest;
    lastField_ = field;
    presentFields_.add(field);
    givesUp_ = isLast && !presentFields_.finish(manifest_);
    return !givesUp_;
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
    // If the chunk ends here, the list may still be empty.
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
    givesUp_ = !state_.entries.add(state_.entry, state_.documentTexts);
    return !givesUp_;
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
  /// Whether to give up, although the unit was complete.
  bool givesUp_ = false;
};

}  // namespace

StreamingManifestReader::StreamingManifestReader() : state_(std::make_unique<ParserState>()) {}

StreamingManifestReader::~StreamingManifestReader() = default;

std::optional<DecodedHeader> StreamingManifestReader::read(ChunkedDocument& document,
                                                           const EntryVisitor& visitEntry) {
  return StreamingParse(*state_, document, visitEntry).run();
}

}  // namespace velmora::internal
