#include "tests/support/AnsweredCases.h"

#include <simdjson.h>

#include <stdexcept>

namespace velmora {
namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

std::vector<std::string> textsOf(const simdjson::dom::array& array) {
  std::vector<std::string> texts;
  for (const element item : array) {
    texts.emplace_back(item.get_string().value());
  }
  return texts;
}

decltype(AnsweredCase::expected) answerOf(const element& value) {
  switch (value.type()) {
    case element_type::BOOL:
      return value.get_bool().value();
    case element_type::INT64:
      return value.get_int64().value();
    case element_type::STRING:
      return std::string(value.get_string().value());
    case element_type::ARRAY:
      return textsOf(value.get_array().value());
    default:
      throw std::invalid_argument("an answer of no known type");
  }
}

AnsweredCase caseOf(const simdjson::dom::object& row) {
  AnsweredCase answered;
  for (const simdjson::dom::key_value_pair& field : row) {
    if (field.key == "name") {
      answered.name = field.value.get_string().value();
    } else if (field.key == "input") {
      answered.input = field.value.get_string().value();
    } else if (field.key == "other") {
      answered.other = field.value.get_string().value();
    } else if (field.key == "paths") {
      answered.paths = textsOf(field.value.get_array().value());
    } else if (field.key != "expect") {
      throw std::invalid_argument("unknown key: " + std::string(field.key));
    }
  }
  answered.expected = answerOf(row["expect"].value());
  return answered;
}

}  // namespace

std::vector<AnsweredCase> readAnsweredCases(std::string_view path) {
  simdjson::dom::parser parser;
  simdjson::dom::document_stream rows =
      parser.load_many(std::string(VELMORA_TEST_DATA "/").append(path)).value();
  std::vector<AnsweredCase> cases;
  for (const element row : rows) {
    cases.push_back(caseOf(row.get_object().value()));
  }
  // A stream that ends in an incomplete row has no error.
  if (rows.truncated_bytes() != 0) {
    throw std::invalid_argument("the last row is incomplete");
  }
  return cases;
}

}  // namespace velmora
