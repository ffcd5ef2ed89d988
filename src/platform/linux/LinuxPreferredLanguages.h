// The user's languages, by gettext's rule for the variables LANGUAGE, LC_ALL, LC_MESSAGES and LANG.
//
// g_get_language_names() is not used. It adds "zh" to a Taiwanese locale, which would select
// Simplified Chinese, and it follows LANGUAGE where gettext does not. A locale counts even if it is
// not generated on this system.
#pragma once

#include "platform/PreferredLanguages.h"

#include <vector>

namespace velmora {

class Environment;

class LinuxPreferredLanguages final : public PreferredLanguages {
 public:
  /// `environment` is kept by reference.
  explicit LinuxPreferredLanguages(const Environment& environment);

  std::vector<Text> preferredLanguages() const override;

 private:
  const Environment& environment_;
};

}  // namespace velmora
