#include "tests/support/AnsweredDocuments.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <utility>

namespace velmora {
namespace {

using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::element_type;
using simdjson::dom::object;

using Pieces = std::vector<std::string>;

[[noreturn]] void refuse(const std::string& what) { throw std::invalid_argument(what); }

std::string textOf(const element& value) { return std::string(value.get_string().value()); }

std::optional<element> memberOf(const object& value, std::string_view key) {
  element member;
  if (value[key].get(member) != simdjson::SUCCESS) {
    return std::nullopt;
  }
  return member;
}

std::string pathBelowTestData(std::string_view path) {
  return std::string(VELMORA_TEST_DATA "/").append(path);
}

std::string contentOf(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string content{std::istreambuf_iterator<char>(stream), {}};
  if (!stream.is_open() || content.empty()) {
    refuse("no base at " + file);
  }
  return content;
}

// Adds the text from `begin` to `end` as a piece, unless it is empty. The next piece begins at
// `end`.
void cut(Pieces& pieces, std::string_view document, std::size_t& begin, std::size_t end) {
  if (end > begin) {
    pieces.emplace_back(document.substr(begin, end - begin));
    begin = end;
  }
}

std::size_t endBeforeWhiteSpace(std::string_view text, std::size_t end) {
  const std::size_t last = text.substr(0, end).find_last_not_of(" \t\r\n");
  return last == std::string_view::npos ? 0 : last + 1;
}

Pieces piecesOf(std::string_view document) {
  Pieces pieces;
  std::size_t begin = 0;
  for (std::size_t position = 0; position < document.size(); ++position) {
    switch (document[position]) {
      case ',':
        cut(pieces, document, begin, position);
        break;
      case '}':
      case ']':
        cut(pieces, document, begin, endBeforeWhiteSpace(document, position));
        break;
      case '{':
      case '[':
        cut(pieces, document, begin, position + 1);
        break;
      default:
        break;
    }
  }
  cut(pieces, document, begin, document.size());
  return pieces;
}

// The bases of one file of rows, each read at its first use.
class Bases {
 public:
  explicit Bases(std::string_view rows) : stem_(rows.substr(0, rows.rfind('.'))) {}

  const Pieces& named(const std::string& name) {
    const auto [found, isNew] = bases_.try_emplace(name);
    if (isNew) {
      found->second = piecesOf(contentOf(pathBelowTestData(stem_ + "." + name + ".json")));
    }
    return found->second;
  }

 private:
  const std::string stem_;
  std::map<std::string, Pieces> bases_;
};

std::string bytesOfHex(std::string_view digits) {
  std::string bytes;
  for (; digits.size() >= 2; digits.remove_prefix(2)) {
    unsigned char byte = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + 2, byte, 16);
    if (error != std::errc() || end != digits.data() + 2) {
      refuse("no hexadecimal digits: " + std::string(digits));
    }
    bytes += static_cast<char>(byte);
  }
  if (!digits.empty()) {
    refuse("half a byte");
  }
  return bytes;
}

std::string repeated(std::string_view text, std::uint64_t times) {
  std::string all;
  for (; times > 0; --times) {
    all += text;
  }
  return all;
}

std::string piecesInRange(const Pieces& base, const array& range) {
  if (range.size() != 2) {
    refuse("a range without two ends");
  }
  const std::uint64_t begin = range.at(0).get_uint64().value();
  const std::uint64_t end = range.at(1).get_uint64().value();
  if (begin >= end || end > base.size()) {
    refuse("a range outside the base");
  }
  std::string pieces;
  for (std::uint64_t index = begin; index < end; ++index) {
    pieces += base[index];
  }
  return pieces;
}

std::string onePiece(const Pieces& base, std::int64_t index) {
  const bool isFirstMember = index < 0;
  const std::string& piece = base.at(static_cast<std::size_t>(isFirstMember ? -index : index));
  if (!isFirstMember) {
    return piece;
  }
  if (!piece.starts_with(',')) {
    refuse("a piece without a comma");
  }
  return piece.substr(1);
}

std::string bytesOfObject(const object& part) {
  if (part.size() == 1) {
    return bytesOfHex(part["hex"].get_string().value());
  }
  if (part.size() != 2) {
    refuse("a part of no known form");
  }
  return repeated(part["repeat"].get_string().value(), part["times"].get_uint64().value());
}

std::string bytesOfPart(const element& part, const Pieces& base) {
  switch (part.type()) {
    case element_type::STRING:
      return textOf(part);
    case element_type::INT64:
      return onePiece(base, part.get_int64().value());
    case element_type::ARRAY:
      return piecesInRange(base, part.get_array().value());
    case element_type::OBJECT:
      return bytesOfObject(part.get_object().value());
    default:
      refuse("a part of no known type");
  }
}

std::string amongZeros(std::string_view text, const array& counts) {
  if (counts.size() != 2) {
    refuse("zeros are told for one side only");
  }
  const std::string before = repeated({"\0", 1}, counts.at(0).get_uint64().value());
  const std::string after = repeated({"\0", 1}, counts.at(1).get_uint64().value());
  std::string wide;
  for (const char byte : text) {
    wide.append(before).append(1, byte).append(after);
  }
  return wide;
}

std::string documentOf(const object& row, Bases& bases) {
  const Pieces none;
  const std::optional<element> baseName = memberOf(row, "base");
  const Pieces& base = baseName ? bases.named(textOf(*baseName)) : none;
  std::string document;
  const array parts = row["parts"].get_array().value();
  for (const element part : parts) {
    document += bytesOfPart(part, base);
  }
  if (const auto zeros = memberOf(row, "zeros")) {
    document = amongZeros(document, zeros->get_array().value());
  }
  if (const auto mark = memberOf(row, "mark")) {
    document.insert(0, bytesOfHex(mark->get_string().value()));
  }
  return document;
}

std::variant<std::string, std::size_t> stepOf(const element& step) {
  if (step.is_string()) {
    return textOf(step);
  }
  return static_cast<std::size_t>(step.get_uint64().value());
}

std::vector<std::variant<std::string, std::size_t>> codingPathOf(const array& steps) {
  std::vector<std::variant<std::string, std::size_t>> path;
  std::ranges::transform(steps, std::back_inserter(path), stepOf);
  return path;
}

std::string knownKind(std::string kind) {
  constexpr std::array<std::string_view, 6> kinds = {
      "keyNotFound", "valueNotFound", "typeMismatch", "dataCorrupted", "corruptFile", "notAMarker"};
  if (std::ranges::find(kinds, kind) == kinds.end()) {
    refuse("unknown kind of error: " + kind);
  }
  return kind;
}

DocumentError errorOf(const object& value) {
  DocumentError error;
  for (const simdjson::dom::key_value_pair& field : value) {
    if (field.key == "codingPath") {
      error.codingPath = codingPathOf(field.value.get_array().value());
    } else if (field.key == "text") {
      error.text = textOf(field.value);
    } else if (field.key != "kind") {
      refuse("unknown key of an error: " + std::string(field.key));
    }
  }
  error.kind = knownKind(textOf(value["kind"].value()));
  return error;
}

decltype(AnsweredDocument::expected) answerOf(const object& value) {
  if (value.size() != 1) {
    refuse("an answer with more than one meaning");
  }
  if (const auto accepted = memberOf(value, "ok")) {
    return simdjson::minify(*accepted);
  }
  return errorOf(value["error"].get_object().value());
}

AnsweredDocument answeredDocumentOf(const object& row, Bases& bases) {
  constexpr std::array<std::string_view, 6> keys = {"name",  "base", "parts",
                                                    "zeros", "mark", "expect"};
  for (const simdjson::dom::key_value_pair& field : row) {
    if (std::ranges::find(keys, field.key) == keys.end()) {
      refuse("unknown key: " + std::string(field.key));
    }
  }
  return {.name = textOf(row["name"].value()),
          .bytes = documentOf(row, bases),
          .expected = answerOf(row["expect"].get_object().value())};
}

}  // namespace

std::vector<AnsweredDocument> readAnsweredDocuments(std::string_view path) {
  simdjson::dom::parser parser;
  simdjson::dom::document_stream rows = parser.load_many(pathBelowTestData(path)).value();
  Bases bases(path);
  std::vector<AnsweredDocument> documents;
  for (const element row : rows) {
    documents.push_back(answeredDocumentOf(row.get_object().value(), bases));
  }
  // A stream that ends in an incomplete row has no error.
  if (rows.truncated_bytes() != 0) {
    refuse("the last row is incomplete");
  }
  return documents;
}

}  // namespace velmora
