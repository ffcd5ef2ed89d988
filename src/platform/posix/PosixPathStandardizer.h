// Path standardisation by the text of the paths, for POSIX systems without a rule of their own.
#pragma once

#include "platform/PathStandardizer.h"

#include <string>
#include <utility>

namespace velmora {

/// See PathStandardizer for the contract. Asks the system only for the working directory and, from
/// the password database, for home directories. A "~" that cannot be expanded stays.
class PosixPathStandardizer final : public PathStandardizer {
 public:
  /// "~" means `home`, the value of the variable HOME, if that is absolute. Otherwise it means the
  /// home directory in the user's password entry.
  explicit PosixPathStandardizer(std::string home = {}) : home_(std::move(home)) {}

  Text standardizedFileURLPath(const Text& path) const override;
  Text standardizedPath(const Text& path) const override;
  std::vector<Text> pathsStandardizedTo(const Text& path) const override;

 private:
  std::string home_;
};

}  // namespace velmora
