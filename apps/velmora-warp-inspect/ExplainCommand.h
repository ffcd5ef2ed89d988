// The command `explain`: why an action accepts or refuses an item.
#pragma once

#include "ResolutionReport.h"
#include "Terminal.h"
#include "extension/SelectionScreening.h"

#include <optional>
#include <string>
#include <vector>

namespace velmora {

struct Platform;

namespace inspect {

/// The marker of an item, and the files of the mirror that name its Warp.
struct ExplainedMarker {
  /// None if the marker cannot be read or is invalid. `fault` then gives the reason.
  std::optional<std::string> warpID = {};
  std::optional<Fault> fault = {};
  /// The valid manifests of this Warp.
  std::vector<ReportedManifest> manifests = {};
  /// The invalid manifests that may name this Warp: each contains the identifier, may contain
  /// another spelling of it, or cannot be read.
  std::vector<ReportedRefusal> refused = {};
};

struct ExplainedItem {
  /// Standardised. If the operand is not a file URL, the unchanged operand.
  std::string path;
  /// None if the operand is not a usable file URL, so that it was not screened.
  std::optional<ItemVerdict> verdict = {};
  /// The innermost warped folder that is or contains the item.
  std::optional<std::string> root = {};
  /// The file of the mirror whose manifest makes the root a warped folder.
  std::optional<std::string> manifestFile = {};
  /// Present if the item contains a marker but is not a warped folder.
  std::optional<ExplainedMarker> marker = {};
  /// The error that prevented a look at the item or at its marker, if the verdict follows from it.
  std::optional<Fault> fault = {};

  [[nodiscard]] bool isAccepted() const { return verdict == ItemVerdict::accepted; }
};

struct Explanation {
  /// One for each operand, in their order.
  std::vector<ExplainedItem> items;
  /// The manifests and faults that the verdicts depend on.
  ResolutionReport resolution;
};

/// Screens the items that the operands name, for the action that `platform.bundle` decides.
[[nodiscard]] Explanation explainItems(const std::vector<std::string>& operands,
                                       const Platform& platform);

/// Formats the item as a JSON object.
[[nodiscard]] std::string toJSON(const ExplainedItem& item);

/// Formats the item as lines of text for people.
[[nodiscard]] std::string toText(const ExplainedItem& item, Style style);

}  // namespace inspect

}  // namespace velmora
