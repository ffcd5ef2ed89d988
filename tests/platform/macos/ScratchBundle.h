// A bundle that stands in for the main bundle, which a test program cannot choose.
#pragma once

#include "tests/support/ScratchDirectory.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// One at a time; `+[NSBundle mainBundle]` answers with it while it lives.
class ScratchBundle {
 public:
  ScratchBundle();
  ScratchBundle(const ScratchBundle&) = delete;
  ScratchBundle& operator=(const ScratchBundle&) = delete;
  ~ScratchBundle();

  /// None at the beginning.
  void identifyAs(const std::optional<std::string>& identifier);

  /// Makes the file `<language>.lproj/Localizable.strings`.
  void writeStrings(std::string_view language, std::string_view content);

  /// The same, of these texts.
  void localize(std::string_view language, const std::map<std::string, std::string>& texts);

 private:
  struct MainBundle;

  void writeNextGeneration();

  ScratchDirectory directory_;
  // Foundation keeps what it has seen of a bundle, so each change is made in another one.
  int generation_ = 0;
  std::optional<std::string> identifier_;
  std::map<std::string, std::string, std::less<>> tables_;
  std::unique_ptr<MainBundle> mainBundle_;
};

}  // namespace velmora
