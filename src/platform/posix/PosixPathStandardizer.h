// Path standardisation by the paths' text, as POSIX systems without a rule of their own need it.
#pragma once

#include "platform/PathStandardizer.h"

namespace velmora {

/// Stateless; see PathStandardizer for the contract. Consults the file system for nothing but the
/// working directory, and the password database for "~user" alone; "~" is the variable HOME where
/// that is absolute. A "~" that cannot be expanded stays.
class PosixPathStandardizer final : public PathStandardizer {
 public:
  Text standardizedFileURLPath(const Text& path) const override;
  Text standardizedPath(const Text& path) const override;
};

}  // namespace velmora
