// A second opinion on documents: that of simdjson's DOM parser, which has nothing in common with
// JSONReader but the search for tokens.
#pragma once

#include "json/strict/JSONReader.h"

#include <memory>
#include <string>

namespace velmora {

enum class JSONAgreement { bothRead, bothRefuse, differ };

/// Reads documents in both ways and compares. The two differ on purpose in three things, and count
/// as agreeing there:
///
/// - The judge refuses numbers that fit neither 64 bits nor a double. It is given 0 instead of
/// each.
/// - The judge takes a byte-order mark for a fault. It is given blanks instead.
/// - The judge reads up to 1024 levels. What it reads deeper than JSONReader may be refused.
class JSONJudge {
 public:
  JSONJudge();
  JSONJudge(const JSONJudge&) = delete;
  JSONJudge& operator=(const JSONJudge&) = delete;
  ~JSONJudge();

  /// Agreement on a document that both read is one on all its values.
  JSONAgreement ask(const std::string& document);

 private:
  class Parser;

  internal::JSONReader reader_;
  std::unique_ptr<Parser> parser_;
};

}  // namespace velmora
