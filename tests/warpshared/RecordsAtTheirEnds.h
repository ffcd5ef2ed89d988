// Records with minimum or maximum values. They follow from the declared fields (RecordFields.h), so
// they include later fields, too.
#pragma once

#include "json/RecordFields.h"
#include "text/Text.h"
#include "warpshared/records/Date.h"
#include "warpshared/records/Enumerations.h"
#include "warpshared/records/WarpSharedEntries.h"

#include <concepts>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace velmora::internal {

enum class End { minimum, maximum };

template <std::integral Integer>
void put(Integer& integer, End end) {
  using Limits = std::numeric_limits<Integer>;
  integer = end == End::minimum ? Limits::min() : Limits::max();
}

template <EnumerationWithRawValues Enumeration>
void put(Enumeration& enumeration, End end) {
  const std::size_t last = EnumNames<Enumeration>::list.size() - 1;
  enumeration = static_cast<Enumeration>(end == End::minimum ? 0 : last);
}

inline void put(Text& text, End end) {
  text = end == End::minimum ? Text() : Text(std::string(300, '/') + '\0' + "\xF0\x9F\x98\x80");
}

inline void put(Date& date, End end) {
  using Limits = std::numeric_limits<double>;
  date.secondsSinceReferenceDate = end == End::minimum ? Limits::lowest() : Limits::max();
}

inline void put(WarpSharedEntries& entries, End) { entries.append(VelmoraWarpSharedEntry()); }

template <RecordWithFields Record>
void put(Record& record, End end);

/// An optional value is present also at its minimum.
template <class Value>
void put(std::optional<Value>& value, End end) {
  put(value.emplace(), end);
}

template <class Element>
void put(std::vector<Element>& elements, End end) {
  elements.assign(end == End::minimum ? 1 : 3, {});
  for (Element& element : elements) {
    put(element, end);
  }
}

template <RecordWithFields Record>
void put(Record& record, End end) {
  std::apply([&](const auto&... fields) { (put(record.*fields.member, end), ...); },
             RecordFields<Record>::list);
}

}  // namespace velmora::internal
