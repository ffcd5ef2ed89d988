// The items that the user selected, as providers that answer at once.
#pragma once

#include "extension/SelectionScreening.h"
#include "platform/ItemProvider.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class PathStandardizer;
struct Platform;

/// What an operand stands for: a file URL (any text that begins with "file:" in any case, or with
/// a scheme and "//"), or else a path, taken relative to the working directory where it is
/// relative. An empty operand, which is what an unset variable of a script leaves, stands for
/// nothing rather than for the working directory; so does a path that is not UTF-8.
[[nodiscard]] LoadedItem loadedItemFromOperand(std::string_view operand,
                                               const PathStandardizer& standardizer);

/// One provider for each operand, in order. `standardizer` outlives them.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> providersFromOperands(
    const std::vector<std::string>& operands, const PathStandardizer& standardizer);

/// The items of a selection as screenSelection tells of them.
struct ScreenedOperands {
  Screening screening;
  /// For each operand the number of its item in the screening, or none for no usable file URL.
  std::vector<std::optional<std::size_t>> itemNumbers;
};

/// Screens what the operands stand for, as a request does that has them for its selection.
[[nodiscard]] ScreenedOperands screenOperands(const std::vector<std::string>& operands,
                                              const Platform& platform);

/// The parts of `bytes` that are each ended by NUL; the last may go without.
[[nodiscard]] std::vector<std::string> splitAtNUL(std::string_view bytes);

}  // namespace velmora
