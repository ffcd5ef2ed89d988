// Loading the selected file URLs, all at once, and putting them back into the selection's order.
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
/// runs out, or ran out when the item was delivered.
[[nodiscard]] std::optional<FileURL> fileURLFromLoadedItem(const LoadedItem& item);

/// The loaded URLs in the order of their providers, those that failed left out without a gap; none
/// when memory ran out while they were loaded.
using GatheredFileURLs = std::optional<std::vector<FileURL>>;

/// Starts all loads and returns. Once every provider has answered, `finalStep` runs, once, on the
/// main queue. A provider that throws has delivered nothing; a second answer is ignored; one that
/// never answers holds `finalStep` back for ever.
///
/// Should there be no memory to reach the main queue, `finalStep` runs with none on the thread of
/// the last answer. Throws only when memory runs out, and then no load was started.
void loadFileURLs(const std::vector<std::shared_ptr<ItemProvider>>& providers, MainQueue& mainQueue,
                  std::function<void(GatheredFileURLs)> finalStep);

}  // namespace velmora
