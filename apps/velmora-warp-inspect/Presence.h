// Whether something exists, or the reason why that cannot be determined.
#pragma once

#include "Report.h"

#include <optional>
#include <string_view>

namespace velmora {

class FileReader;

namespace inspect {

/// The answer of FileReader::exists, which is false also where it cannot be determined.
struct Presence {
  /// None if it cannot be determined.
  std::optional<bool> exists;
  /// The reason, for example a missing permission.
  std::optional<Fault> fault = {};
};

[[nodiscard]] Presence presenceOf(std::string_view path, const FileReader& files);

}  // namespace inspect

}  // namespace velmora
