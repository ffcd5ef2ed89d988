// The JSON output of a program: one object per line.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::process {

/// One object. JSON pointers (RFC 6901) name its values. A missing value, or one of another type,
/// throws simdjson::simdjson_error.
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
  /// The keys of an object in their order. An empty pointer means the whole object.
  std::vector<std::string> keys(std::string_view pointer = "") const;

 private:
  // Only declared here, because the parser's header compiles as slowly as a test.
  struct Document;

  std::shared_ptr<const Document> document_;
};

/// The objects of an output. Throws std::runtime_error when the last line does not end.
std::vector<JSONLine> jsonLines(std::string_view output);

}  // namespace velmora::process
