// A document that a test reads.
#pragma once

#include "json/strict/JSONReader.h"
#include "json/strict/ValueDecoding.h"
#include "tests/json/Faults.h"

#include <string>
#include <utility>

namespace velmora::internal {

/// Owns all memory of the document's values. Throws the reader's errors.
class ReadDocument {
 public:
  explicit ReadDocument(std::string bytes)
      : bytes_(std::move(bytes)), value_(reader_.read(bytes_)) {}
  ReadDocument(const ReadDocument&) = delete;
  ReadDocument& operator=(const ReadDocument&) = delete;

  [[nodiscard]] JSONValue value() const { return value_; }

 private:
  std::string bytes_;
  JSONReader reader_;
  JSONValue value_;
};

/// The value of a document that is one value.
template <class Value>
Value decoded(const std::string& document) {
  const ReadDocument read(document);
  Value value{};
  decode(read.value(), value);
  return value;
}

/// The fault of such a document; "none" if there is none.
template <class Value>
std::string faultIn(const std::string& document) {
  return faultOf([&document] { static_cast<void>(decoded<Value>(document)); });
}

}  // namespace velmora::internal
