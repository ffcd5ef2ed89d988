// The hint for a mistyped name.
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace velmora {

/// The name among `names` that begins with `word`, or else the nearest one, with at most two wrong,
/// missing, additional or exchanged letters, or one in a name of less than six. None if there is no
/// such name.
[[nodiscard]] std::optional<std::string_view> nearestName(std::string_view word,
                                                          std::span<const std::string_view> names);

}  // namespace velmora
