#include "tests/support/JSONJudge.h"

#include "json/DecodingError.h"
#include "json/ExactInteger.h"

#include <simdjson.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

template <class Integer>
std::optional<Integer> parsed(std::string_view number) {
  Integer integer = 0;
  const char* const end = number.data() + number.size();
  const std::from_chars_result result = std::from_chars(number.data(), end, integer);
  return result.ec == std::errc() && result.ptr == end ? std::optional(integer) : std::nullopt;
}

double approximation(std::string_view number) {
  return std::strtod(std::string(number).c_str(), nullptr);
}

bool fitsTheJudge(std::string_view number) {
  if (number.find_first_of(".eE") != std::string_view::npos) {
    return std::isfinite(approximation(number));
  }
  return parsed<std::int64_t>(number).has_value() || parsed<std::uint64_t>(number).has_value();
}

/// Replaces all numbers below `root` in `document` that are too large for the judge by 0.
void clearLargeNumbers(internal::JSONValue root, std::string& document) {
  std::vector<internal::JSONValue> pending = {root};
  while (!pending.empty()) {
    const internal::JSONValue value = pending.back();
    pending.pop_back();
    if (value.type() == internal::JSONType::number && !fitsTheJudge(value.number())) {
      const std::size_t length = value.number().size();
      document.replace(value.byteOffset(), length, "0" + std::string(length - 1, ' '));
    } else if (value.type() == internal::JSONType::array) {
      for (internal::JSONElements elements(value); !elements.atEnd(); elements.advance()) {
        pending.push_back(elements.value());
      }
    } else if (value.type() == internal::JSONType::object) {
      for (internal::JSONMembers members(value); !members.atEnd(); members.advance()) {
        pending.push_back(members.value());
      }
    }
  }
}

std::size_t depthOf(element root) {
  std::size_t deepest = 0;
  std::vector<std::pair<element, std::size_t>> pending = {{root, 1}};
  while (!pending.empty()) {
    const auto [value, depth] = pending.back();
    pending.pop_back();
    if (value.is_array()) {
      deepest = std::max(deepest, depth);
      const simdjson::dom::array children = value.get_array().value_unsafe();
      for (const element child : children) {
        pending.emplace_back(child, depth + 1);
      }
    } else if (value.is_object()) {
      deepest = std::max(deepest, depth);
      const simdjson::dom::object fields = value.get_object().value_unsafe();
      for (const simdjson::dom::key_value_pair field : fields) {
        pending.emplace_back(field.value, depth + 1);
      }
    }
  }
  return deepest;
}

bool isSameNumber(std::string_view number, element judged) {
  switch (judged.type()) {
    case element_type::INT64: {
      if (!fitsTheJudge(number)) {
        return judged.get_int64().value_unsafe() == 0;
      }
      const std::optional<internal::ExactInteger> integer = internal::exactInteger(number);
      return integer.has_value() &&
             internal::checkedCast<std::int64_t>(*integer) == judged.get_int64().value_unsafe();
    }
    case element_type::UINT64: {
      const std::optional<internal::ExactInteger> integer = internal::exactInteger(number);
      return integer.has_value() &&
             internal::checkedCast<std::uint64_t>(*integer) == judged.get_uint64().value_unsafe();
    }
    case element_type::DOUBLE:
      return judged.get_double().value_unsafe() == approximation(number);
    default:
      return false;
  }
}

using Pairs = std::vector<std::pair<internal::JSONValue, element>>;

/// Whether both arrays have equally many elements. Adds the elements to `pairs`.
bool addElements(internal::JSONValue value, const simdjson::dom::array& judged, Pairs& pairs) {
  internal::JSONElements elements(value);
  for (const element child : judged) {
    if (elements.atEnd()) {
      return false;
    }
    pairs.emplace_back(elements.value(), child);
    elements.advance();
  }
  return elements.atEnd();
}

/// Whether both objects have the same keys in the same order. Adds the values to `pairs`.
bool addMembers(internal::JSONValue value, const simdjson::dom::object& judged, Pairs& pairs) {
  internal::JSONMembers members(value);
  for (const simdjson::dom::key_value_pair field : judged) {
    if (members.atEnd() || members.key() != field.key) {
      return false;
    }
    pairs.emplace_back(members.value(), field.value);
    members.advance();
  }
  return members.atEnd();
}

bool isSame(internal::JSONValue value, element judged, Pairs& pairs) {
  switch (value.type()) {
    case internal::JSONType::null:
      return judged.is_null();
    case internal::JSONType::boolean:
      return judged.is_bool() && judged.get_bool().value_unsafe() == value.boolean();
    case internal::JSONType::number:
      return isSameNumber(value.number(), judged);
    case internal::JSONType::string:
      return judged.is_string() && judged.get_string().value_unsafe() == value.text();
    case internal::JSONType::array:
      return judged.is_array() && addElements(value, judged.get_array().value_unsafe(), pairs);
    case internal::JSONType::object:
      break;
  }
  return judged.is_object() && addMembers(value, judged.get_object().value_unsafe(), pairs);
}

bool areSame(internal::JSONValue root, element judged) {
  Pairs pairs = {{root, judged}};
  while (!pairs.empty()) {
    const auto [value, other] = pairs.back();
    pairs.pop_back();
    if (!isSame(value, other, pairs)) {
      return false;
    }
  }
  return true;
}

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

}  // namespace

class JSONJudge::Parser : public simdjson::dom::parser {};

JSONJudge::JSONJudge() : parser_(std::make_unique<Parser>()) {}

JSONJudge::~JSONJudge() = default;

JSONAgreement JSONJudge::ask(const std::string& document) {
  std::string judged = document;
  if (judged.starts_with(byteOrderMark)) {
    judged.replace(0, byteOrderMark.size(), byteOrderMark.size(), ' ');
  }
  std::string bytes = document;
  std::optional<internal::JSONValue> value;
  try {
    value = reader_.read(bytes);
    clearLargeNumbers(*value, judged);
  } catch (const DecodingError&) {
    value.reset();
  }
  element root;
  if (parser_->parse(judged).get(root) != simdjson::SUCCESS) {
    return value.has_value() ? JSONAgreement::differ : JSONAgreement::bothRefuse;
  }
  if (!value.has_value()) {
    return depthOf(root) > internal::maxJSONNesting ? JSONAgreement::bothRefuse
                                                    : JSONAgreement::differ;
  }
  return areSame(*value, root) ? JSONAgreement::bothRead : JSONAgreement::differ;
}

}  // namespace velmora
