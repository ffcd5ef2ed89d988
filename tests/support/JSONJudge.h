// A second opinion on documents, from simdjson's DOM parser. It shares only the search for tokens
// with JSONReader.
#pragma once

#include "json/strict/JSONReader.h"

#include <memory>
#include <string>

namespace velmora {

enum class JSONAgreement { bothRead, bothRefuse, differ };

/// Reads documents with both parsers and compares. These intended differences count as agreement:
///
/// - The judge refuses numbers that fit neither 64 bits nor a double, so it gets 0 in their place.
/// - The judge refuses a byte-order mark, so it gets blanks in its place.
/// - The judge reads up to 1024 levels. JSONReader may refuse deeper levels than its own limit.
class JSONJudge {
 public:
  JSONJudge();
  JSONJudge(const JSONJudge&) = delete;
  JSONJudge& operator=(const JSONJudge&) = delete;
  ~JSONJudge();

  /// Agreement on an accepted document includes all of its values.
  JSONAgreement ask(const std::string& document);

 private:
  class Parser;

  internal::JSONReader reader_;
  std::unique_ptr<Parser> parser_;
};

}  // namespace velmora
