// Loads the selected file URLs concurrently, and returns them in the order of the selection.
#pragma once

#include "platform/ItemProvider.h"
#include "text/FileURL.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace velmora {

class ExtensionContext;
class MainQueue;

/// The attachments that offer a file URL: in the order of the items, then of the attachments.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> fileURLProviders(
    const ExtensionContext& context);

/// The file URL that a loaded item is or represents, or none. Throws std::bad_alloc when memory
/// runs out, or for an item of the kind OutOfMemory.
[[nodiscard]] std::optional<FileURL> fileURLFromLoadedItem(const LoadedItem& item);

/// The loaded URLs in the order of their providers, without those that failed; none when memory ran
/// out during the loading.
using GatheredFileURLs = std::optional<std::vector<FileURL>>;

/// Starts all loads and returns. After every provider has answered, `finalStep` runs once, on the
/// main queue. A provider that throws counts as an answer without an item. A second answer is
/// ignored. A provider that never answers delays `finalStep` for ever.
///
/// Without the memory to reach the main queue, `finalStep` runs with none, on the thread of the
/// last answer or within this call. Throws only when memory runs out, and then no load was started.
void loadFileURLs(const std::vector<std::shared_ptr<ItemProvider>>& providers, MainQueue& mainQueue,
                  std::function<void(GatheredFileURLs)> finalStep);

}  // namespace velmora
