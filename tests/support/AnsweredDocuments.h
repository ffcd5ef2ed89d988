// Answered documents, kept as data: one JSON object per line, which has a document and the expected
// answer.
//
// A row: {"name": …, "parts": […], "expect": …}. The document is its parts in sequence:
//
//   "text"                        the UTF-8 of the text
//   {"hex": "fffe"}               bytes, which need not be UTF-8
//   {"repeat": "[", "times": 512} the UTF-8 of the text, repeated
//   7, [7, 12], -7                pieces of a base
//
// Many documents differ only in a few places, or in the order of their members. So a row may have a
// "base", too: NAME means the document in the file FILE.NAME.json beside FILE.jsonl. A piece of the
// base ends before each "," and after each "{" and "[". It also ends before each "}" and "]", and
// before the white space there. 7 is piece 7, and [7, 12] are pieces 7 to 11. -7 is piece 7 without
// its initial comma, so that a later member can become the first one.
//
// "zeros": [1, 0] puts one NUL before and no NUL after each byte, for UTF-16 and UTF-32. "mark":
// "feff" are bytes before everything else.
//
// "expect" is {"ok": …} or {"error": {"kind": …, "codingPath": […], "text": …}}. "codingPath" and
// "text" may be absent.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velmora {

struct DocumentError {
  /// "keyNotFound", "valueNotFound", "typeMismatch", "dataCorrupted", "corruptFile" (the whole file
  /// is refused after decoding) or "notAMarker".
  std::string kind;
  /// Keys and array indices; std::nullopt when the row has none.
  std::optional<std::vector<std::variant<std::string, std::size_t>>> codingPath;
  /// std::nullopt when the message is not compared.
  std::optional<std::string> text;
};

struct AnsweredDocument {
  std::string name;
  std::string bytes;
  /// The answer as JSON without white space, with the members in the order of the row; or the
  /// error.
  std::variant<std::string, DocumentError> expected;

  /// Null when the document is refused.
  const std::string* okJSON() const { return std::get_if<std::string>(&expected); }
  /// Null when the document is accepted.
  const DocumentError* error() const { return std::get_if<DocumentError>(&expected); }
};

/// The rows of the file at `path` below the test data, in order. Throws when the file is missing,
/// or when a row has another format, so that no case is skipped.
[[nodiscard]] std::vector<AnsweredDocument> readAnsweredDocuments(std::string_view path);

}  // namespace velmora
