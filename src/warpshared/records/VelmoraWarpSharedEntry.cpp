#include "warpshared/records/VelmoraWarpSharedEntry.h"

#include "warpshared/records/FieldLists.h"

#include <concepts>
#include <cstddef>
#include <tuple>
#include <utility>

namespace velmora {

namespace internal {

namespace {

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

}  // namespace internal

VelmoraWarpSharedEntry ownedEntry(const WarpSharedEntry<TextView>& entry) {
  VelmoraWarpSharedEntry owned;
  internal::copyRecord(entry, owned);
  return owned;
}

}  // namespace velmora
