// The items that the user selected, as providers that answer at once.
#pragma once

#include "extension/SelectionScreening.h"
#include "platform/ItemProvider.h"
#include "text/FileURL.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class PathStandardizer;
struct Platform;

/// The file URL that an operand stands for. A text that begins with "file:" in any case, or with a
/// scheme and "//", is a URL. Any other text is a path, and a relative path is below the working
/// directory. None for a URL that is no file URL, for a path that is not UTF-8, and for an empty
/// operand, which an unset variable of a script leaves.
[[nodiscard]] std::optional<FileURL> fileURLFromOperand(std::string_view operand,
                                                        const PathStandardizer& standardizer);

/// One provider for each operand, in order. `standardizer` outlives them.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> providersFromOperands(
    const std::vector<std::string>& operands, const PathStandardizer& standardizer);

struct ScreenedOperands {
  Screening screening;
  /// For each operand the index of its item in the screening; none for an operand that is no file.
  std::vector<std::optional<std::size_t>> itemNumbers;
};

/// Screens the operands as a request does that has them as its selection.
[[nodiscard]] ScreenedOperands screenOperands(const std::vector<std::string>& operands,
                                              const Platform& platform);

/// The parts of `bytes` that are each ended by NUL; the last may go without.
[[nodiscard]] std::vector<std::string> splitAtNUL(std::string_view bytes);

}  // namespace velmora
