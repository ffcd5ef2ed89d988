// A replacement for the main bundle, which a test program cannot choose.
#pragma once

#include "tests/support/ScratchDirectory.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// Only one may exist at a time. `+[NSBundle mainBundle]` returns this bundle during its life.
class ScratchBundle {
 public:
  ScratchBundle();
  ScratchBundle(const ScratchBundle&) = delete;
  ScratchBundle& operator=(const ScratchBundle&) = delete;
  ~ScratchBundle();

  /// There is no identifier at first.
  void identifyAs(const std::optional<std::string>& identifier);

  /// Creates the file `<language>.lproj/Localizable.strings`.
  void writeStrings(std::string_view language, std::string_view content);

  /// Creates the same file with these texts.
  void localize(std::string_view language, const std::map<std::string, std::string>& texts);

 private:
  struct MainBundle;

  void writeNextGeneration();

  ScratchDirectory directory_;
  // Foundation caches a bundle's content, so each change makes a new bundle.
  int generation_ = 0;
  std::optional<std::string> identifier_;
  std::map<std::string, std::string, std::less<>> tables_;
  std::unique_ptr<MainBundle> mainBundle_;
};

}  // namespace velmora
