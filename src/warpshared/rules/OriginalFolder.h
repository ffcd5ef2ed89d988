// Which paths belong to a warped folder: its own path and those below it.
#pragma once

#include "text/Text.h"

#include <string>
#include <string_view>

namespace velmora::internal {

class OriginalFolder {
 public:
  /// `path` outlives the object.
  explicit OriginalFolder(TextView path);

  [[nodiscard]] bool owns(TextView path) const;

 private:
  TextView path_;
  /// The path with a separator at its end.
  std::string prefix_;
};

}  // namespace velmora::internal
