// Unique identifiers.
#pragma once

#include <string>

namespace velmora {

/// Calls may come from any thread.
class IdentifierSource {
 public:
  virtual ~IdentifierSource() = default;

  /// A fresh random UUID (RFC 4122, version 4) in its 36-character text form, in upper case.
  virtual std::string uuid() = 0;
};

}  // namespace velmora
