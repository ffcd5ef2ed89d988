// The reason why a value cannot be written, and its place.
#pragma once

#include "json/DecodingError.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace velmora {

/// Thrown by encoding, which then returns no document. `what()` is the description, in English, for
/// developers.
class EncodingError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;

  /// The steps from the encoded value to the one that cannot be written. Empty if they are the
  /// same.
  [[nodiscard]] const std::vector<CodingKey>& codingPath() const { return codingPath_; }

  /// Adds a step before the others, for a writer of a container that passes on an error of a value.
  void prependToCodingPath(CodingKey key);

 private:
  std::vector<CodingKey> codingPath_;
};

}  // namespace velmora
