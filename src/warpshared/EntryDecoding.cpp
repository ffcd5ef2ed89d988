#include "json/RecordDecoding.h"
#include "text/CanonicalTextSet.h"
#include "warpshared/FieldCodecs.h"
#include "warpshared/PathPredicates.h"
#include "warpshared/TextEncodings.h"
#include "warpshared/VelmoraWarpSharedEntry.h"

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace velmora {

namespace {

using EntryView = WarpSharedEntry<TextView>;
using AttributeView = WarpSharedExtendedAttribute<TextView>;
using PartView = WarpSharedPayloadPart<TextView>;

bool hasAllMetadata(const EntryView& entry) {
  return entry.hasModificationTimeMetadata && entry.hasOwnershipMetadata &&
         entry.hasPOSIXPermissionsMetadata && entry.hasBSDFlagsMetadata &&
         entry.hasExtendedAttributesMetadata && entry.hasACLMetadata;
}

/// Files have a handful of attributes with short names: comparing each with each is quicker than a
/// set then.
bool areFewAndShort(const std::vector<AttributeView>& attributes) {
  constexpr std::size_t fewAttributes = 16;
  constexpr std::size_t shortLength = 255;
  return attributes.size() <= fewAttributes &&
         std::ranges::all_of(attributes, [](const AttributeView& attribute) {
           return attribute.name.view().size() <= shortLength;
         });
}

bool hasEqualNames(const std::vector<AttributeView>& attributes) {
  if (areFewAndShort(attributes)) {
    for (auto attribute = attributes.begin(); attribute != attributes.end(); ++attribute) {
      if (std::find_if(attributes.begin(), attribute, [&](const AttributeView& earlier) {
            return earlier.name == attribute->name;
          }) != attribute) {
        return true;
      }
    }
    return false;
  }
  CanonicalTextSet names;
  return !std::ranges::all_of(attributes, [&names](const AttributeView& attribute) {
    return names.insert(attribute.name);
  });
}

bool isSafe(const AttributeView& attribute) {
  const std::string_view name = attribute.name;
  return !name.empty() && name.find('\0') == std::string_view::npos &&
         isStandardBase64(attribute.base64Value);
}

bool isMetadataComplete(const EntryView& entry) {
  return hasAllMetadata(entry) && !hasEqualNames(entry.extendedAttributes) &&
         std::ranges::all_of(entry.extendedAttributes, isSafe);
}

/// Whether a range is one at all and ends at `limit` at the latest.
bool isRangeWithin(std::int64_t limit, std::int64_t offset, std::int64_t length) {
  return offset >= 0 && length >= 0 && length <= limit && offset <= limit - length;
}

bool isSafe(const PartView& part) {
  return isRangeWithin(std::numeric_limits<std::int64_t>::max(), part.offset, part.size) &&
         isSafeRelativeObjectKey(part.key);
}

bool arePartsSafe(const EntryView& entry) {
  return std::ranges::all_of(entry.payloadParts, [](const PartView& part) { return isSafe(part); });
}

bool areExtentsInside(const EntryView& entry) {
  return std::ranges::all_of(
      entry.sparseExtents, [&entry](const VelmoraWarpSharedSparseExtent& extent) {
        return isRangeWithin(entry.size, extent.logicalOffset, extent.length) &&
               isRangeWithin(entry.storedSize, extent.storedOffset, extent.length);
      });
}

/// Whether a value that may be absent is, or else satisfies `predicate`.
template <class Predicate>
bool isAbsentOr(const std::optional<TextView>& text, Predicate predicate) {
  return !text.has_value() || predicate(text->view());
}

template <RecordWithFields From, RecordWithFields To>
void copyRecord(const From& from, To& to);

template <class Value>
void copyValue(const Value& from, Value& to) {
  to = from;
}

void copyValue(TextView from, Text& to) { to = Text(from.view()); }

void copyValue(const std::optional<TextView>& from, std::optional<Text>& to) {
  if (from.has_value()) {
    to.emplace(from->view());
  }
}

template <RecordWithFields From, RecordWithFields To>
requires(!std::same_as<From, To>) void copyValue(const std::vector<From>& from,
                                                 std::vector<To>& to) {
  to.resize(from.size());
  for (std::size_t index = 0; index < from.size(); ++index) {
    copyRecord(from[index], to[index]);
  }
}

template <RecordWithFields From, RecordWithFields To>
void copyRecord(const From& from, To& to) {
  const auto copyField = [&](const auto& fromField, const auto& toField) {
    copyValue(from.*fromField.member, to.*toField.member);
  };
  [&]<std::size_t... indexes>(std::index_sequence<indexes...>) {
    (copyField(std::get<indexes>(RecordFields<From>::list),
               std::get<indexes>(RecordFields<To>::list)),
     ...);
  }
  (std::make_index_sequence<fieldCount<From>>());
}

}  // namespace

void decode(JSONValue value, EntryView& entry) {
  RecordReader reader(value, entry);
  reader.read<"absolutePath">();
  if (!isCanonicalAbsolutePath(entry.relativePath)) {
    reader.refuse<"absolutePath">("Shared Warp entries require canonical absolute paths.");
  }
  reader.read<"displayName", "size">();
  if (entry.size < 0) {
    reader.refuse<"size">("Shared Warp entry sizes cannot be negative.");
  }
  reader.read<"modificationTimeNanoseconds", "hardLinkPrimaryPath">();
  if (entry.storedSize < 0) {
    reader.refuse<"storedSize">("Shared Warp stored sizes cannot be negative.");
  }
  if (!isAbsentOr(entry.contentChecksumSHA256, isSHA256Hex)) {
    reader.refuse<"contentChecksumSHA256">("Shared Warp checksums must be SHA-256 hex values.");
  }
  if (!isMetadataComplete(entry)) {
    reader.refuse<"extendedAttributes">("Shared Warp entries require complete current metadata.");
  }
  if (!isAbsentOr(entry.hardLinkPrimaryPath, isCanonicalAbsolutePath)) {
    reader.refuse<"hardLinkPrimaryPath">(
        "Shared Warp hard-link paths must be canonical absolute paths.");
  }
  if (!arePartsSafe(entry)) {
    reader.refuse<"payloadParts">(
        "Shared Warp payload parts contain an unsafe range or object key.");
  }
  if (!isAbsentOr(entry.payloadKey, isSafeRelativeObjectKey)) {
    reader.refuse<"payloadKey">("Shared Warp payload keys must be safe relative object keys.");
  }
  if (!areExtentsInside(entry)) {
    reader.refuse<"sparseExtents">(
        "Shared Warp sparse extents fall outside the stored file range.");
  }
}

bool isAcceptable(const EntryView& entry) {
  return isCanonicalAbsolutePath(entry.relativePath) && entry.size >= 0 && entry.storedSize >= 0 &&
         isAbsentOr(entry.contentChecksumSHA256, isSHA256Hex) && isMetadataComplete(entry) &&
         isAbsentOr(entry.hardLinkPrimaryPath, isCanonicalAbsolutePath) && arePartsSafe(entry) &&
         isAbsentOr(entry.payloadKey, isSafeRelativeObjectKey) && areExtentsInside(entry);
}

void decode(JSONValue value, VelmoraWarpSharedEntry& entry) {
  EntryView view;
  decode(value, view);
  entry = ownedEntry(view);
}

VelmoraWarpSharedEntry ownedEntry(const EntryView& entry) {
  VelmoraWarpSharedEntry owned;
  copyRecord(entry, owned);
  return owned;
}

}  // namespace velmora
