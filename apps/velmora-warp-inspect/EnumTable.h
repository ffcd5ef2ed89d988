// Tables with the words for the cases of an enumeration.
#pragma once

#include <algorithm>
#include <ranges>

namespace velmora::inspect {

/// The row whose member `value` equals `value`. The table must have a row for every case.
template <std::ranges::forward_range Table, class Value>
[[nodiscard]] constexpr const auto& rowFor(const Table& table, const Value& value) {
  return *std::ranges::find(table, value, &std::ranges::range_value_t<Table>::value);
}

}  // namespace velmora::inspect
