#include "warpshared/rules/EntryRules.h"

#include "text/CanonicalTextSet.h"
#include "warpshared/records/FieldLists.h"
#include "warpshared/rules/TextRules.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::internal {

namespace {

using EntryView = WarpSharedEntry<TextView>;
using AttributeView = WarpSharedExtendedAttribute<TextView>;
using PartView = WarpSharedPayloadPart<TextView>;

bool hasAllMetadata(const EntryView& entry) {
  return entry.hasModificationTimeMetadata && entry.hasOwnershipMetadata &&
         entry.hasPOSIXPermissionsMetadata && entry.hasBSDFlagsMetadata &&
         entry.hasExtendedAttributesMetadata && entry.hasACLMetadata;
}

/// Most files have few attributes with short names. Comparing all pairs is quicker than a set then.
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

/// Whether offset and length are not negative, and the range ends at `limit` or before.
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

/// Whether `text` is absent or satisfies `predicate`.
template <class Predicate>
bool isAbsentOr(const std::optional<TextView>& text, Predicate predicate) {
  return !text.has_value() || predicate(text->view());
}

template <KeyLiteral key>
constexpr std::size_t field = fieldIndex<EntryView, key>;

constexpr std::size_t lastField = fieldCount<EntryView> - 1;

bool isPathCanonical(const EntryView& entry) { return isCanonicalAbsolutePath(entry.relativePath); }
bool isSizeValid(const EntryView& entry) { return entry.size >= 0; }
bool isStoredSizeValid(const EntryView& entry) { return entry.storedSize >= 0; }

bool isChecksumValid(const EntryView& entry) {
  return isAbsentOr(entry.contentChecksumSHA256, isSHA256Hex);
}

bool isPrimaryPathCanonical(const EntryView& entry) {
  return isAbsentOr(entry.hardLinkPrimaryPath, isCanonicalAbsolutePath);
}

bool isPayloadKeySafe(const EntryView& entry) {
  return isAbsentOr(entry.payloadKey, isSafeRelativeObjectKey);
}

// In each row: the field that is read before the test, the field of the report, the test, the
// words.
constexpr std::array<EntryRule, 9> rules = {{
    {field<"absolutePath">, field<"absolutePath">, isPathCanonical,
     "Shared Warp entries require canonical absolute paths."},
    {field<"size">, field<"size">, isSizeValid, "Shared Warp entry sizes cannot be negative."},
    {lastField, field<"storedSize">, isStoredSizeValid,
     "Shared Warp stored sizes cannot be negative."},
    {lastField, field<"contentChecksumSHA256">, isChecksumValid,
     "Shared Warp checksums must be SHA-256 hex values."},
    {lastField, field<"extendedAttributes">, isMetadataComplete,
     "Shared Warp entries require complete current metadata."},
    {lastField, field<"hardLinkPrimaryPath">, isPrimaryPathCanonical,
     "Shared Warp hard-link paths must be canonical absolute paths."},
    {lastField, field<"payloadParts">, arePartsSafe,
     "Shared Warp payload parts contain an unsafe range or object key."},
    {lastField, field<"payloadKey">, isPayloadKeySafe,
     "Shared Warp payload keys must be safe relative object keys."},
    {lastField, field<"sparseExtents">, areExtentsInside,
     "Shared Warp sparse extents fall outside the stored file range."},
}};

}  // namespace

std::span<const EntryRule> entryRules() { return rules; }

bool satisfiesEntryRules(const EntryView& entry) {
  return [&entry]<std::size_t... indexes>(std::index_sequence<indexes...>) {
    return (rules[indexes].holds(entry) && ...);
  }
  (std::make_index_sequence<rules.size()>());
}

}  // namespace velmora::internal
