// The command `explain`: why an item suits an action or does not.
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
  /// None when the marker cannot be read or is no marker; then the fault says why.
  std::optional<std::string> warpID = {};
  std::optional<Fault> fault = {};
  /// Manifests of this Warp.
  std::vector<ReportedManifest> manifests = {};
  /// Files that hold the identifier, or may hold it in another spelling, and are no valid
  /// manifests.
  std::vector<ReportedRefusal> refused = {};
};

struct ExplainedItem {
  /// Standardised; the operand as it stands where that is no file URL.
  std::string path;
  /// None when the item never came to be screened: its operand is no usable file URL.
  std::optional<ItemVerdict> verdict = {};
  std::optional<std::string> root = {};
  /// The file of the mirror by which the root is a warped folder.
  std::optional<std::string> manifestFile = {};
  /// For an item that holds a marker and is no warped folder.
  std::optional<ExplainedMarker> marker = {};

  [[nodiscard]] bool isAccepted() const { return verdict == ItemVerdict::accepted; }
};

struct Explanation {
  /// One for each operand, in their order.
  std::vector<ExplainedItem> items;
  /// The look at the warped folders that the verdicts rest on.
  ResolutionReport resolution;
};

/// Screens the items that the operands stand for, by the action that `platform.bundle` decides.
[[nodiscard]] Explanation explainItems(const std::vector<std::string>& operands,
                                       const Platform& platform);

/// As a JSON object.
[[nodiscard]] std::string toJSON(const ExplainedItem& item);

/// In lines for people.
[[nodiscard]] std::string toText(const ExplainedItem& item, Style style);

}  // namespace inspect

}  // namespace velmora
