// Documents with their answers, kept as data: one JSON object per line, read by the tests of the
// functions that must give these answers.
//
// A row: {"name": …, "parts": […], "expect": …}. The document is its parts, one after the other:
//
//   "text"                        the UTF-8 of the text
//   {"hex": "fffe"}               bytes, which need not be UTF-8
//   {"repeat": "[", "times": 512} the UTF-8 of the text, so many times
//   7, [7, 12], -7                pieces of a base
//
// Most documents differ in little from each other, or in the order of members only. So a row may
// have a "base", too: NAME stands for the document in the file FILE.NAME.json beside FILE.jsonl. A
// piece of it ends before each "," and after each "{" and "[", and before each "}" and "]" with the
// white space before those. 7 is piece 7, [7, 12] are the pieces from 7 up to 12 without that one,
// and -7 is piece 7 without the comma that it begins with, which makes a first member of a later
// one.
//
// "zeros": [1, 0] puts so many NULs before and after each byte, as UTF-16 and UTF-32 have them;
// "mark": "feff" are bytes that come before everything else.
//
// "expect" is {"ok": …} or {"error": {"kind": …, "codingPath": […], "text": …}}; the latter two may
// be absent.
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
  /// Keys and array indices. None when none is told.
  std::optional<std::vector<std::variant<std::string, std::size_t>>> codingPath;
  /// None when the wording is free.
  std::optional<std::string> text;
};

struct AnsweredDocument {
  std::string name;
  std::string bytes;
  /// The answer as JSON without white space, members in the order of the row; or the error.
  std::variant<std::string, DocumentError> expected;

  /// Null when the document is refused.
  const std::string* okJSON() const { return std::get_if<std::string>(&expected); }
  /// Null when the document is accepted.
  const DocumentError* error() const { return std::get_if<DocumentError>(&expected); }
};

/// The rows of the file at `path` below the test data, in order. Throws when the file is missing or
/// any row is not as described above, so that no case goes unasked.
[[nodiscard]] std::vector<AnsweredDocument> readAnsweredDocuments(std::string_view path);

}  // namespace velmora
