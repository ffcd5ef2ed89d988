#include "warpshared/rules/EntryRules.h"

#include "text/CanonicalTextSet.h"
#include "warpshared/records/EntryFields.h"
#include "warpshared/rules/PathPredicates.h"
#include "warpshared/rules/TextEncodings.h"

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

constexpr std::array rules = {
    EntryRule{
        .testedAfter = field<"absolutePath">,
        .field = field<"absolutePath">,
        .holds = [](const EntryView& entry) { return isCanonicalAbsolutePath(entry.relativePath); },
        .message = "Shared Warp entries require canonical absolute paths."},
    EntryRule{.testedAfter = field<"size">,
              .field = field<"size">,
              .holds = [](const EntryView& entry) { return entry.size >= 0; },
              .message = "Shared Warp entry sizes cannot be negative."},
    EntryRule{.testedAfter = lastField,
              .field = field<"storedSize">,
              .holds = [](const EntryView& entry) { return entry.storedSize >= 0; },
              .message = "Shared Warp stored sizes cannot be negative."},
    EntryRule{.testedAfter = lastField,
              .field = field<"contentChecksumSHA256">,
              .holds =
                  [](const EntryView& entry) {
                    return isAbsentOr(entry.contentChecksumSHA256, isSHA256Hex);
                  },
              .message = "Shared Warp checksums must be SHA-256 hex values."},
    EntryRule{.testedAfter = lastField,
              .field = field<"extendedAttributes">,
              .holds = isMetadataComplete,
              .message = "Shared Warp entries require complete current metadata."},
    EntryRule{.testedAfter = lastField,
              .field = field<"hardLinkPrimaryPath">,
              .holds =
                  [](const EntryView& entry) {
                    return isAbsentOr(entry.hardLinkPrimaryPath, isCanonicalAbsolutePath);
                  },
              .message = "Shared Warp hard-link paths must be canonical absolute paths."},
    EntryRule{.testedAfter = lastField,
              .field = field<"payloadParts">,
              .holds = arePartsSafe,
              .message = "Shared Warp payload parts contain an unsafe range or object key."},
    EntryRule{.testedAfter = lastField,
              .field = field<"payloadKey">,
              .holds =
                  [](const EntryView& entry) {
                    return isAbsentOr(entry.payloadKey, isSafeRelativeObjectKey);
                  },
              .message = "Shared Warp payload keys must be safe relative object keys."},
    EntryRule{.testedAfter = lastField,
              .field = field<"sparseExtents">,
              .holds = areExtentsInside,
              .message = "Shared Warp sparse extents fall outside the stored file range."},
};

}  // namespace

std::span<const EntryRule> entryRules() { return rules; }

bool satisfiesEntryRules(const EntryView& entry) {
  return [&entry]<std::size_t... indexes>(std::index_sequence<indexes...>) {
    return (rules[indexes].holds(entry) && ...);
  }
  (std::make_index_sequence<rules.size()>());
}

}  // namespace velmora::internal
