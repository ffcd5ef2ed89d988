#include "warpshared/reading/EntryDecoding.h"

#include "json/strict/RecordDecoding.h"
#include "warpshared/records/FieldCodecs.h"
#include "warpshared/records/FieldLists.h"
#include "warpshared/rules/EntryRules.h"

namespace velmora::internal {

void decode(JSONValue value, WarpSharedEntry<TextView>& entry) {
  RecordReader reader(value, entry);
  for (const EntryRule& rule : entryRules()) {
    reader.readThrough(rule.testedAfter);
    if (!rule.holds(entry)) {
      reader.refuse(rule.field, rule.message);
    }
  }
}

void decode(JSONValue value, VelmoraWarpSharedEntry& entry) {
  WarpSharedEntry<TextView> view;
  decode(value, view);
  entry = ownedEntry(view);
}

}  // namespace velmora::internal
