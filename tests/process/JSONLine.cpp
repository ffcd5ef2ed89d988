#include "tests/process/JSONLine.h"

#include <simdjson.h>

#include <stdexcept>

namespace velmora::process {

struct JSONLine::Document {
  explicit Document(std::string_view line) : root(parser.parse(line.data(), line.size())) {}

  simdjson::dom::parser parser;
  simdjson::dom::element root;
};

JSONLine::JSONLine(std::string_view line) : document_(std::make_shared<Document>(line)) {}

bool JSONLine::has(std::string_view pointer) const {
  return document_->root.at_pointer(pointer).error() == simdjson::SUCCESS;
}

std::string JSONLine::text(std::string_view pointer) const {
  return std::string(std::string_view(document_->root.at_pointer(pointer).get_string()));
}

std::uint64_t JSONLine::number(std::string_view pointer) const {
  return document_->root.at_pointer(pointer).get_uint64();
}

bool JSONLine::flag(std::string_view pointer) const {
  return document_->root.at_pointer(pointer).get_bool();
}

bool JSONLine::isNull(std::string_view pointer) const {
  return document_->root.at_pointer(pointer).is_null();
}

std::vector<std::string> JSONLine::texts(std::string_view pointer) const {
  std::vector<std::string> result;
  for (const simdjson::dom::element element : document_->root.at_pointer(pointer).get_array()) {
    result.emplace_back(std::string_view(element.get_string()));
  }
  return result;
}

std::vector<std::string> JSONLine::keys(std::string_view pointer) const {
  std::vector<std::string> result;
  for (const auto field : document_->root.at_pointer(pointer).get_object()) {
    result.emplace_back(field.key);
  }
  return result;
}

std::vector<JSONLine> jsonLines(std::string_view output) {
  std::vector<JSONLine> lines;
  while (!output.empty()) {
    const std::size_t end = output.find('\n');
    if (end == std::string_view::npos) {
      throw std::runtime_error("no line: " + std::string(output));
    }
    lines.emplace_back(output.substr(0, end));
    output.remove_prefix(end + 1);
  }
  return lines;
}

}  // namespace velmora::process
