// The rules that each entry of a manifest must satisfy beyond the types of its fields
// (docs/formats.md): the one list of them, for both readers.
#pragma once

#include "text/Text.h"
#include "warpshared/records/VelmoraWarpSharedEntry.h"

#include <cstddef>
#include <span>

namespace velmora::internal {

/// One rule. Fields are indexes into RecordFields<WarpSharedEntry>.
struct EntryRule {
  /// The rule is tested as soon as this field has been read, before any later field is.
  std::size_t testedAfter;
  /// The field that a broken rule is reported at.
  std::size_t field;
  bool (*holds)(const WarpSharedEntry<TextView>& entry);
  const char* message;
};

/// All rules, in the order in which they are tested.
[[nodiscard]] std::span<const EntryRule> entryRules();

/// Whether all rules hold. Quicker than a loop over them, because the compiler sees each one.
[[nodiscard]] bool satisfiesEntryRules(const WarpSharedEntry<TextView>& entry);

}  // namespace velmora::internal
