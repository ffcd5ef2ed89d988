// Which of the selected items the action may be applied to.
#pragma once

#include "resolution/WarpedFolders.h"
#include "text/FileURL.h"
#include "text/Text.h"

#include <optional>
#include <vector>

namespace velmora {

struct Platform;

/// Why an item suits the action or does not.
enum class ItemVerdict {
  accepted,
  /// Warp: nothing is there, or no directory.
  notADirectory,
  /// Warp: the item is a warped folder.
  alreadyWarped,
  /// Warp and Restore: the item lies in a warped folder.
  insideWarpedFolder,
  /// Restore: the item holds no marker.
  noMarker,
  /// Restore: the item is no warped folder and lies in none.
  notWarped,
};

/// A selected item with its verdict.
struct ScreenedItem {
  /// Standardised.
  Text path;
  ItemVerdict verdict = ItemVerdict::accepted;
  /// The innermost warped folder that the item is or lies in, where that was asked for.
  std::optional<Text> root = {};
};

struct Screening {
  /// In the order of the selection.
  std::vector<ScreenedItem> items;
  /// What was looked at to tell which items lie in a warped folder.
  Resolution resolution;
};

/// Screens the selection for the action that `platform.bundle` decides.
///
/// - Warp takes what is a directory, links followed, and neither is nor lies in a warped folder.
/// - Restore takes a warped folder that holds its marker; not a folder inside one.
///
/// Never fails outward: what cannot be looked at does not suit. Takes no lock; the folders may
/// change meanwhile. Throws only when memory runs out.
[[nodiscard]] Screening screenSelection(const std::vector<FileURL>& selection,
                                        const Platform& platform);

/// The paths of the accepted items, without repetitions, in the order of the selection.
[[nodiscard]] std::vector<Text> acceptedPaths(const Screening& screening);

}  // namespace velmora
