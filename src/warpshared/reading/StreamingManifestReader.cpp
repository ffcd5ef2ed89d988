// Parses a manifest unit by unit. A unit is a member of the manifest, or an entry of its list of
// entries. The state between two units is small: the fields so far, and whether the list of entries
// is open. So the parse can stop after any unit and continue in the next chunk of the document.
//
// An example, with fewer fields than a manifest has, and a chunk length of 40:
//
//   offset    0         10        20        30        40
//             |         |         |         |         |
//   document  {"version":4,"entries":[{"size":1},{"size":2}]}
//   chunk 1   {"version":4,"entries":[{"size":1},              0 to 35, ends before the last `{`
//   chunk 2                                      {"size":2}]}  35 to 47, the last one
//
//   chunk 1: tokens begin at 0 1 10 11 12 13 22 23 24 25 31 32 33 34, then four sentinels 35
//     inManifest     0 1 10     {"version":    the predictor finds the field `version`
//                    11         4              readField
//                    (12        ,              endMember sees that another member follows)
//     inManifest     12 13 22   ,"entries":    the predictor finds the field `entries`
//                    23         [              beginList opens the list
//     inEntries      24 ... 33  {"size":1}     readEntry, and all rules of an entry
//                    34         ,              the entry goes to the visitor
//     The next token is a sentinel: the chunk is read.
//   chunk 2: tokens begin at 0 1 7 8 9 10 11 (35 in the document), then four sentinels 12
//     inEntries      0 ... 9    {"size":2}     as above
//                    10         ]              closes the list
//                    11         }              ends the manifest
//     afterManifest  Only blanks may follow. Last, the rules of the manifest are tested.
//
// A chunk may also end inside of a unit. The unit then fails at the sentinel. The reader leaves the
// bytes of the unit unread, and the next chunk begins with them. If the chunk ends in the value of
// an unknown key, which may be of any size, the rest of the value is passed over first, and the
// unit begins again with a 0 in place of the value. A unit that fails before the sentinel, or in
// the last chunk, ends the parse: the document is refused.
//
// Some rules concern all paths of a list. A hash of each path is kept to tell that paths are
// distinct, and the common ancestor of all paths to tell that they are in the original folder,
// which may be read after the list. Both may leave a doubt. The document is then read again, with
// other hashes, and with the original folder of the first reading, so that each path is compared
// with that.
#include "warpshared/reading/StreamingManifestReader.h"

#include "json/streaming/StreamingRecordReader.h"
#include "json/streaming/TextArena.h"
#include "text/UniquenessCheck.h"
#include "warpshared/records/FieldCodecs.h"
#include "warpshared/records/FieldLists.h"
#include "warpshared/rules/EntryRules.h"
#include "warpshared/rules/ManifestRules.h"
#include "warpshared/rules/OriginalFolder.h"
#include "warpshared/rules/TextRules.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace velmora::internal {

namespace {

using Manifest = VelmoraWarpSharedManifest;
using EntryView = WarpSharedEntry<TextView>;

/// What is known of a list of paths, in memory that does not grow with their texts.
class PathList {
 public:
  /// `folder` is the original folder, if it is known already.
  void begin(std::uint64_t salt, const OriginalFolder* folder) {
    paths_.clear(salt);
    ancestor_.clear();
    folder_ = folder;
    areOwned_ = true;
  }

  /// Adds a canonical path.
  void add(TextView path) {
    paths_.add(path);
    areOwned_ = areOwned_ && (folder_ != nullptr ? folder_->owns(path) : ancestor_.add(path));
  }

  [[nodiscard]] std::size_t size() const { return paths_.size(); }

  /// Whether each path of `others` is one of this list.
  [[nodiscard]] bool includes(UniquenessCheck& others) const { return paths_.includes(others); }

  /// Whether the paths are surely distinct and in `folder`. Clears the list.
  [[nodiscard]] bool areSurelyOwned(const OriginalFolder& folder) {
    const bool areDistinct = paths_.allDistinct();
    return areDistinct && areOwned_ && (folder_ != nullptr || ancestor_.isBelow(folder));
  }

 private:
  UniquenessCheck paths_;
  CommonAncestor ancestor_;
  const OriginalFolder* folder_ = nullptr;
  bool areOwned_ = true;
};

}  // namespace

class StreamingManifestReader::ParserState {
 public:
  StreamingRecordReader<Manifest, EntryView, WarpSharedPayloadPart<TextView>,
                        VelmoraWarpSharedSparseExtent, VelmoraWarpSharedHardLinkIdentity,
                        WarpSharedExtendedAttribute<TextView>>
      reader;
  EntryView entry;
  PathList entries;
  PathList samples;
  UniquenessCheck primaryPaths;
  /// Texts of the current chunk.
  TextArena texts;
};

namespace {

enum class Verdict { accepted, refused, undecided };

/// Reads one manifest once.
template <class ParserState>
class StreamingParse {
 public:
  /// `folder` is the original folder if that is known from an earlier reading, or null.
  StreamingParse(ParserState& state, ChunkedDocument& document, const ManifestVisitor& visitor,
                 const OriginalFolder* folder)
      : state_(state), document_(document), visitor_(visitor), folder_(folder) {}

  Verdict run() {
    const std::uint64_t salt = folder_ == nullptr ? 0 : 1;
    state_.entries.begin(salt, folder_);
    state_.samples.begin(salt, folder_);
    state_.primaryPaths.clear(salt);
    visitor_.begin();
    if (!document_.mayBeginWith('{')) {
      return Verdict::refused;
    }
    std::size_t unreadLength = 0;
    do {
      if (!document_.advance(unreadLength, maxChunkLength())) {
        return Verdict::refused;
      }
      state_.texts.clear();
      TokenCursor tokens(document_.text(), document_.tokens(), state_.texts);
      if (!readUnits(tokens, unreadLength)) {
        return Verdict::refused;
      }
    } while (!document_.isLast());
    return place_ == Place::afterManifest ? verdictOnManifest() : Verdict::refused;
  }

  Manifest& manifest() { return manifest_; }

 private:
  enum class Place { inManifest, inEntries, inSamples, afterManifest };

  static constexpr std::size_t entriesField = fieldIndex<Manifest, "entries">;
  static constexpr std::size_t samplesField =
      fieldIndex<Manifest, "verificationSampleAbsolutePaths">;
  /// The number of arrays and objects around a member's value, and around a list's element.
  static constexpr std::size_t memberDepth = 1;
  static constexpr std::size_t elementDepth = 2;

  [[nodiscard]] std::size_t maxChunkLength() const {
    return place_ == Place::inEntries ? maxStreamedEntryLength : maxStreamedMemberLength;
  }

  /// Reads the units of a chunk. Sets the length of the last unit if the chunk ends in it.
  bool readUnits(TokenCursor& tokens, std::size_t& unreadLength) {
    unreadLength = 0;
    while (!tokens.atEnd()) {
      unitLength_ = tokens.remaining();
      if (readUnit(tokens)) {
        continue;
      }
      const std::optional<std::size_t> cutValueLength = state_.reader.takeCutValueLength();
      if (isBroken_ || !tokens.atEnd() || document_.isLast()) {
        return false;
      }
      if (cutValueLength.has_value()) {
        return passOverCutValue(unitLength_ - *cutValueLength);
      }
      unreadLength = unitLength_;
    }
    return true;
  }

  /// Passes over the rest of a value that the chunk ends in. `beginningLength` is the length of its
  /// unit before the value.
  bool passOverCutValue(std::size_t beginningLength) {
    const std::string_view text = document_.text();
    std::string unit(text.substr(text.size() - unitLength_, beginningLength));
    // No chunk ends between the colon and the new value.
    unit.erase(unit.rfind(':') + 1);
    unit += '0';
    while (!document_.isLast()) {
      if (!document_.advanceThroughString(maxChunkLength())) {
        return false;
      }
      state_.texts.clear();
      TokenCursor tokens(document_.text(), document_.tokens(), state_.texts);
      switch (state_.reader.skipper().skip(tokens, document_.endsInString())) {
        case ValueSkipper::Progress::complete:
          document_.replaceRead(unit, tokens.remaining());
          return true;
        case ValueSkipper::Progress::broken:
          return false;
        case ValueSkipper::Progress::atEndOfChunk:
          break;
      }
    }
    return false;
  }

  bool readUnit(TokenCursor& tokens) {
    switch (place_) {
      case Place::inManifest:
        return readMember(tokens);
      case Place::inEntries:
        return readListedEntry(tokens);
      case Place::inSamples:
        return readListedSample(tokens);
      case Place::afterManifest:
        break;
    }
    return false;
  }

  bool readMember(TokenCursor& tokens) {
    state_.reader.setDepth(memberDepth);
    const std::size_t field = state_.reader.template takeMemberStart<Manifest>(tokens, lastField_);
    if (field == MemberPredictor<Manifest>::none) {
      return false;
    }
    if (MemberPredictor<Manifest>::isUnknown(field) || presentFields_.has(field)) {
      return state_.reader.skipValue(tokens) && endMember(tokens, field);
    }
    switch (field) {
      case entriesField:
        return beginList(tokens, field, Place::inEntries);
      case samplesField:
        return beginList(tokens, field, Place::inSamples);
      case fieldIndex<Manifest, "rootMetadata">:
        return readRoot(tokens) && endKeptMember(tokens, field);
      default:
        return state_.reader.readField(tokens, manifest_, field) && endKeptMember(tokens, field);
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
    if (!MemberPredictor<Manifest>::isUnknown(field) && !presentFields_.has(field)) {
      presentFields_.add(field);
    }
    isBroken_ = isLast && !presentFields_.finish(manifest_);
    return !isBroken_;
  }

  bool endKeptMember(TokenCursor& tokens, std::size_t field) {
    if (!endMember(tokens, field)) {
      return false;
    }
    keptLength_ += unitLength_ - tokens.remaining();
    if (keptLength_ > maxStreamedMemberLength) {
      throw std::length_error("the members of a manifest are too long");
    }
    return true;
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

  bool beginList(TokenCursor& tokens, std::size_t field, Place place) {
    // If the chunk ends here, the list may still be empty.
    if (!tokens.take('[') || tokens.atEnd()) {
      return false;
    }
    if (tokens.take(']')) {
      return endMember(tokens, field);
    }
    place_ = place;
    return true;
  }

  /// Takes the comma after an element, or the end of the list.
  bool endElement(TokenCursor& tokens, std::size_t field) {
    return tokens.take(']') ? endMember(tokens, field) : tokens.take(',');
  }

  bool readListedEntry(TokenCursor& tokens) {
    state_.reader.setDepth(elementDepth);
    if (!readEntry(tokens) || !endElement(tokens, entriesField)) {
      return false;
    }
    visitor_.entry(state_.entry);
    state_.entries.add(state_.entry.relativePath);
    const std::optional<TextView>& primaryPath = state_.entry.hardLinkPrimaryPath;
    if (primaryPath.has_value()) {
      state_.primaryPaths.add(*primaryPath);
      isBroken_ = *primaryPath == state_.entry.relativePath;
    }
    requireFewPaths();
    return !isBroken_;
  }

  bool readListedSample(TokenCursor& tokens) {
    TextView sample;
    if (!tokens.take(sample) || !endElement(tokens, samplesField)) {
      return false;
    }
    visitor_.sample(sample);
    isBroken_ = !isCanonicalAbsolutePath(sample);
    if (!isBroken_) {
      state_.samples.add(sample);
    }
    requireFewPaths();
    return !isBroken_;
  }

  void requireFewPaths() const {
    if (state_.entries.size() + state_.samples.size() + 2 * state_.primaryPaths.size() >
        maxStreamedPathCount) {
      throw std::length_error("a manifest has too many paths");
    }
  }

  Verdict verdictOnManifest() {
    const OriginalFolder folder(manifest_.originalFolderPath);
    ManifestFacts facts{.manifest = manifest_};
    facts.areHardLinksInside = state_.entries.includes(state_.primaryPaths);
    if (!satisfiesRules(facts)) {
      return Verdict::refused;
    }
    facts.areEntriesOwned = state_.entries.areSurelyOwned(folder);
    facts.areSamplesOwned = state_.samples.areSurelyOwned(folder);
    if (satisfiesRules(facts)) {
      return Verdict::accepted;
    }
    return folder_ == nullptr ? Verdict::undecided : Verdict::refused;
  }

  static bool satisfiesRules(const ManifestFacts& facts) {
    return std::ranges::all_of(manifestRules(),
                               [&facts](const ManifestRule& rule) { return rule.holds(facts); });
  }

  ParserState& state_;
  ChunkedDocument& document_;
  const ManifestVisitor& visitor_;
  const OriginalFolder* folder_;
  Manifest manifest_;
  PresentFields<Manifest> presentFields_;
  std::size_t lastField_ = fieldCount<Manifest>;
  Place place_ = Place::inManifest;
  /// The length of the chunk from the beginning of the current unit.
  std::size_t unitLength_ = 0;
  /// The length of the members that are kept.
  std::size_t keptLength_ = 0;
  /// Whether to refuse the document, although the unit was complete.
  bool isBroken_ = false;
};

}  // namespace

StreamingManifestReader::StreamingManifestReader() : state_(std::make_unique<ParserState>()) {}

StreamingManifestReader::~StreamingManifestReader() = default;

StreamingManifestReader::StreamingManifestReader(StreamingManifestReader&&) noexcept = default;

StreamingManifestReader& StreamingManifestReader::operator=(StreamingManifestReader&&) noexcept =
    default;

std::optional<Manifest> StreamingManifestReader::read(const OpenDocument& open,
                                                      const ManifestVisitor& visitor) {
  const std::unique_ptr<ChunkedDocument> document = open();
  StreamingParse first(*state_, *document, visitor, nullptr);
  const Verdict verdict = first.run();
  if (verdict == Verdict::accepted) {
    return std::move(first.manifest());
  }
  if (verdict == Verdict::refused) {
    return std::nullopt;
  }
  const Text folderPath = std::move(first.manifest().originalFolderPath);
  const OriginalFolder folder(folderPath);
  const std::unique_ptr<ChunkedDocument> again = open();
  StreamingParse second(*state_, *again, visitor, &folder);
  // The file may have changed.
  return second.run() == Verdict::accepted && second.manifest().originalFolderPath == folderPath
             ? std::optional(std::move(second.manifest()))
             : std::nullopt;
}

}  // namespace velmora::internal
