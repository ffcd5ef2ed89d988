// The user's languages, by gettext's rule for the variables LANGUAGE, LC_ALL, LC_MESSAGES and LANG.
//
// Not by g_get_language_names(): it adds "zh" to a Taiwanese locale, which would then be served in
// Simplified Chinese, and follows LANGUAGE where gettext does not. Nor does a locale have to be
// generated on this system to count.
#pragma once

#include "platform/PreferredLanguages.h"

#include <vector>

namespace velmora {

class Environment;

class LinuxPreferredLanguages final : public PreferredLanguages {
 public:
  /// The reference is kept.
  explicit LinuxPreferredLanguages(const Environment& environment);

  std::vector<Text> preferredLanguages() const override;

 private:
  const Environment& environment_;
};

}  // namespace velmora
