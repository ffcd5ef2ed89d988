// Which of the selected items the action may be applied to.
#pragma once

#include "resolution/ResolutionObserver.h"
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
  std::optional<Text> root;
};

/// Hears of the look-up of the warped folders, and then of each selected item.
class ScreeningObserver : public ResolutionObserver {
 public:
  virtual void didScreenItem(const ScreenedItem& /*item*/) {}
};

/// The standardised paths of the folders that are warped now, newest Warp first. Reads the shared
/// Warp root afresh. Never fails outward: without a root, the list is empty.
[[nodiscard]] std::vector<Text> warpedFolderPaths(const Platform& platform,
                                                  ResolutionObserver& observer);

/// The standardised paths of the items that suit the action, without repetitions, in the order of
/// the selection; empty when none does.
///
/// - Warp takes what is a directory, links followed, and neither is nor lies in a warped folder.
/// - Restore takes a warped folder that holds its marker; not a folder inside one.
///
/// Never fails outward: what cannot be looked at does not suit. Takes no lock; the folders may
/// change meanwhile. Throws only when memory runs out.
[[nodiscard]] std::vector<Text> screenSelection(const std::vector<FileURL>& selection,
                                                const Platform& platform,
                                                ScreeningObserver& observer);

}  // namespace velmora
