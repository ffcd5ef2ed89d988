// Records with values at their ends, made by the declaration of their fields (RecordFields.h): for
// fields that do not exist yet, too.
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

enum class End { least, greatest };

template <std::integral Integer>
void put(Integer& integer, End end) {
  using Limits = std::numeric_limits<Integer>;
  integer = end == End::least ? Limits::min() : Limits::max();
}

template <EnumerationWithRawValues Enumeration>
void put(Enumeration& enumeration, End end) {
  const std::size_t last = EnumNames<Enumeration>::list.size() - 1;
  enumeration = static_cast<Enumeration>(end == End::least ? 0 : last);
}

inline void put(Text& text, End end) {
  text = end == End::least ? Text() : Text(std::string(300, '/') + '\0' + "\xF0\x9F\x98\x80");
}

inline void put(Date& date, End end) {
  using Limits = std::numeric_limits<double>;
  date.secondsSinceReferenceDate = end == End::least ? Limits::lowest() : Limits::max();
}

inline void put(WarpSharedEntries& entries, End) { entries.append(VelmoraWarpSharedEntry()); }

template <RecordWithFields Record>
void put(Record& record, End end);

/// There at its least, too.
template <class Value>
void put(std::optional<Value>& value, End end) {
  put(value.emplace(), end);
}

template <class Element>
void put(std::vector<Element>& elements, End end) {
  elements.assign(end == End::least ? 1 : 3, {});
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
