// Why an item suits an action or does not.
#pragma once

#include "ResolutionRecorder.h"
#include "Style.h"
#include "extension/SelectionScreening.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct Platform;

namespace inspect {

struct ExplainedItem {
  /// Standardised; the operand as it stands where that is no file URL.
  std::string path;
  /// None when the item never came to be screened: its operand is no usable file URL.
  std::optional<ItemVerdict> verdict;
  std::optional<std::string> root;

  [[nodiscard]] bool isAccepted() const { return verdict == ItemVerdict::accepted; }

  bool operator==(const ExplainedItem&) const = default;
};

/// "accepted" and so on; "notAFileURL" for none.
[[nodiscard]] std::string_view name(std::optional<ItemVerdict> verdict);

/// Screens what the operands stand for, by the action that `platform.bundle` decides. One item for
/// each operand, in their order.
[[nodiscard]] std::vector<ExplainedItem> explainItems(const std::vector<std::string>& operands,
                                                      const Platform& platform,
                                                      ResolutionRecorder& recorder);

/// As a JSON object.
[[nodiscard]] std::string toJSON(const ExplainedItem& item);

/// In lines for people.
[[nodiscard]] std::string toText(const ExplainedItem& item, const Style& style);

}  // namespace inspect

}  // namespace velmora
