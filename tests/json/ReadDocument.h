// A document that a test reads.
#pragma once

#include "json/strict/JSONReader.h"

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

}  // namespace velmora::internal
