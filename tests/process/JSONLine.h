// The answers of a program to programs: one JSON object a line.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::process {

/// One object. Values are named by JSON pointers (RFC 6901); asking for what is not there, or is of
/// another type, throws simdjson::simdjson_error.
class JSONLine {
 public:
  /// Throws simdjson::simdjson_error unless `line` is JSON in UTF-8.
  explicit JSONLine(std::string_view line);

  bool has(std::string_view pointer) const;
  std::string text(std::string_view pointer) const;
  std::uint64_t number(std::string_view pointer) const;
  bool flag(std::string_view pointer) const;
  bool isNull(std::string_view pointer) const;
  std::vector<std::string> texts(std::string_view pointer) const;
  /// The keys of an object in their order; of the whole one without a pointer.
  std::vector<std::string> keys(std::string_view pointer = "") const;

 private:
  // Declared here only: the parser's header takes as long to compile as a test.
  struct Document;

  std::shared_ptr<const Document> document_;
};

/// The objects of an output. Throws std::runtime_error when it does not end with a line.
std::vector<JSONLine> jsonLines(std::string_view output);

}  // namespace velmora::process
