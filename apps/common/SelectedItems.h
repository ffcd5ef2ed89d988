// The selected items that the operands of a command line name.
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

/// The file URL that an operand names. An operand is a URL if it begins with "file:" in any case,
/// or with a scheme and "://". Any other operand is a path; a relative path is resolved against the
/// working directory. Returns none for a URL that is not a file URL, for a path that is not UTF-8,
/// and for an empty operand. A script with an unset variable can pass an empty operand.
[[nodiscard]] std::optional<FileURL> fileURLFromOperand(std::string_view operand,
                                                        const PathStandardizer& standardizer);

/// One provider for each operand, in order. Each delivers its item within the call that loads it.
/// `standardizer` must outlive the providers.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> providersFromOperands(
    const std::vector<std::string>& operands, const PathStandardizer& standardizer);

struct ScreenedOperands {
  Screening screening;
  /// For each operand, the index of its item in the screening; none if the operand has no file URL.
  std::vector<std::optional<std::size_t>> itemNumbers;
};

/// Screens the operands like a request whose selection they are.
[[nodiscard]] ScreenedOperands screenOperands(const std::vector<std::string>& operands,
                                              const Platform& platform);

/// Splits `bytes` after each NUL, and removes the NULs. The last part may lack its NUL.
[[nodiscard]] std::vector<std::string> splitAtNUL(std::string_view bytes);

}  // namespace velmora
