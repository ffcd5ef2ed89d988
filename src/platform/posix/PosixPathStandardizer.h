// Path standardisation by the paths' text, as POSIX systems without a rule of their own need it.
#pragma once

#include "platform/PathStandardizer.h"

#include <string>
#include <utility>

namespace velmora {

/// See PathStandardizer for the contract. Consults nothing but the working directory and, for home
/// directories, the password database. A "~" that cannot be expanded stays.
class PosixPathStandardizer final : public PathStandardizer {
 public:
  /// `home` is what "~" stands for when it is absolute, as the variable HOME tells; otherwise the
  /// home directory in the user's password entry is.
  explicit PosixPathStandardizer(std::string home = {}) : home_(std::move(home)) {}

  Text standardizedFileURLPath(const Text& path) const override;
  Text standardizedPath(const Text& path) const override;
  std::vector<Text> pathsStandardizedTo(const Text& path) const override;

 private:
  std::string home_;
};

}  // namespace velmora
