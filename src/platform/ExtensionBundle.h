// The program's identity and its localized resources.
#pragma once

#include "text/Text.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// The strings of one language. A string is read at the moment of its look-up.
class LocalizationFolder {
 public:
  virtual ~LocalizationFolder() = default;

  /// The text under `key`; `value` when there is none or the table cannot be used.
  virtual std::string localizedString(std::string_view key, std::string_view value) const = 0;
};

/// Calls may come from any thread.
class ExtensionBundle {
 public:
  virtual ~ExtensionBundle() = default;

  /// The identifier under which the program runs, or none.
  virtual std::optional<Text> bundleIdentifier() const = 0;

  /// The resource folder `<language>.lproj`; null when there is none or it cannot be opened.
  virtual std::unique_ptr<LocalizationFolder> localizationFolder(
      std::string_view language) const = 0;
};

}  // namespace velmora
