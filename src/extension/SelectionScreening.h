// Decides which of the selected items the action may be applied to.
#pragma once

#include "resolution/WarpedFolders.h"
#include "text/FileURL.h"
#include "text/Text.h"

#include <optional>
#include <vector>

namespace velmora {

struct Platform;

/// The result for one item: accepted, or the reason why the action cannot be applied to it.
enum class ItemVerdict {
  accepted,
  /// Warp: there is no directory at the path.
  notADirectory,
  /// Warp: the item is a warped folder.
  alreadyWarped,
  /// Warp and Restore: the item is inside of a warped folder.
  insideWarpedFolder,
  /// Restore: the item contains no marker.
  noMarker,
  /// Restore: the item neither is a warped folder nor is inside of one.
  notWarped,
};

/// A selected item with its verdict.
struct ScreenedItem {
  /// Standardised.
  Text path;
  ItemVerdict verdict = ItemVerdict::accepted;
  /// The innermost warped folder that is or contains the item. Only looked up for an item that
  /// passes the check of its own path.
  std::optional<Text> root = {};
};

struct Screening {
  /// In the order of the selection.
  std::vector<ScreenedItem> items;
  /// The manifests that decide which items are in a warped folder.
  Resolution resolution;
};

/// Screens the selection for the action that `platform.bundle` decides.
///
/// - Warp accepts a directory, also through symbolic links, that neither is a warped folder nor is
///   inside of one.
/// - Restore accepts a warped folder that contains its marker, but no folder inside of one.
///
/// An item that cannot be examined is not accepted. Takes no lock; the folders may change
/// meanwhile. Throws only when memory runs out.
[[nodiscard]] Screening screenSelection(const std::vector<FileURL>& selection,
                                        const Platform& platform);

/// The paths of the accepted items, without repetitions, in the order of the selection.
[[nodiscard]] std::vector<Text> acceptedPaths(const Screening& screening);

}  // namespace velmora
