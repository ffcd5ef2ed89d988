#include "extension/SelectionGathering.h"

#include "platform/ExtensionContext.h"
#include "platform/MainQueue.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <new>
#include <utility>
#include <variant>

namespace velmora {

namespace {

/// The state that the load callbacks of one request share; they may run on any thread. It lives as
/// long as any callback, but releases `finalStep_` at the end of the request.
class Gathering : public std::enable_shared_from_this<Gathering> {
 public:
  Gathering(std::size_t providerCount, MainQueue& mainQueue,
            std::function<void(GatheredFileURLs)> finalStep)
      : mainQueue_(mainQueue),
        finalStep_(std::move(finalStep)),
        answered_(providerCount),
        // One share per provider, and one for the caller that starts the loads, so that the count
        // cannot reach 0 before all loads are started.
        pendingShares_(providerCount + 1) {}

  void start(std::size_t position, ItemProvider& provider) noexcept {
    try {
      provider.loadItem(fileURLTypeIdentifier,
                        [self = shared_from_this(), position](const LoadedItem& item,
                                                              const PlatformError*) noexcept {
                          self->answer(position, item);
                        });
    } catch (const std::bad_alloc&) {
      if (!answered_[position]) {
        noteMemoryRanOut();
      }
      answer(position, {});
    } catch (...) {
      // A provider that throws counts as an answer without an item.
      answer(position, {});
    }
  }

  void leave() noexcept {
    if (pendingShares_.fetch_sub(1) > 1) {
      return;
    }
    if (!finishOnMainQueue()) {
      // Nobody else will end the request.
      finish(std::nullopt);
    }
  }

 private:
  /// Returns false when there is no memory to reach the main queue.
  bool finishOnMainQueue() noexcept {
    try {
      mainQueue_.async([self = shared_from_this()] { self->finish(self->takeURLs()); });
      return true;
    } catch (...) {
      return false;
    }
  }

  void answer(std::size_t position, const LoadedItem& item) noexcept {
    if (answered_[position].exchange(true)) {
      return;
    }
    try {
      if (std::optional<FileURL> url = fileURLFromLoadedItem(item)) {
        const std::lock_guard guard(lock_);
        loadedURLsByIndex_.emplace(static_cast<std::int64_t>(position), *std::move(url));
      }
    } catch (const std::bad_alloc&) {
      noteMemoryRanOut();
    }
    leave();
  }

  void noteMemoryRanOut() noexcept {
    const std::lock_guard guard(lock_);
    memoryRanOut_ = true;
  }

  GatheredFileURLs takeURLs() noexcept {
    const std::lock_guard guard(lock_);
    if (memoryRanOut_) {
      return std::nullopt;
    }
    try {
      std::vector<FileURL> urls;
      urls.reserve(loadedURLsByIndex_.size());
      for (auto& [index, url] : loadedURLsByIndex_) {
        urls.push_back(std::move(url));
      }
      return urls;
    } catch (const std::bad_alloc&) {
      return std::nullopt;
    }
  }

  void finish(GatheredFileURLs urls) { std::exchange(finalStep_, nullptr)(std::move(urls)); }

  MainQueue& mainQueue_;
  std::function<void(GatheredFileURLs)> finalStep_;
  std::vector<std::atomic<bool>> answered_;
  std::atomic<std::size_t> pendingShares_;

  /// Guards the members below: the load callbacks write them, the final step reads them.
  std::mutex lock_;
  std::map<std::int64_t, FileURL> loadedURLsByIndex_;
  bool memoryRanOut_ = false;
};

struct FileURLReader {
  std::optional<FileURL> operator()(std::monostate) const { return std::nullopt; }
  std::optional<FileURL> operator()(const FileURL& url) const { return url; }
  std::optional<FileURL> operator()(const URLObject& url) const {
    return fileURLFromURLText(url.absoluteText);
  }
  std::optional<FileURL> operator()(UnusableItem) const { return std::nullopt; }
  std::optional<FileURL> operator()(OutOfMemory) const { throw std::bad_alloc(); }
};

}  // namespace

std::vector<std::shared_ptr<ItemProvider>> fileURLProviders(const ExtensionContext& context) {
  std::vector<std::shared_ptr<ItemProvider>> providers;
  for (const InputItem& inputItem : context.inputItems()) {
    const auto* item = std::get_if<ExtensionItem>(&inputItem);
    if (item == nullptr || !item->attachments.has_value()) {
      continue;
    }
    for (const std::shared_ptr<ItemProvider>& attachment : *item->attachments) {
      if (attachment->hasItemConformingTo(fileURLTypeIdentifier)) {
        providers.push_back(attachment);
      }
    }
  }
  return providers;
}

std::optional<FileURL> fileURLFromLoadedItem(const LoadedItem& item) {
  return std::visit(FileURLReader{}, item);
}

void loadFileURLs(const std::vector<std::shared_ptr<ItemProvider>>& providers, MainQueue& mainQueue,
                  std::function<void(GatheredFileURLs)> finalStep) {
  const auto gathering =
      std::make_shared<Gathering>(providers.size(), mainQueue, std::move(finalStep));
  for (std::size_t position = 0; position < providers.size(); ++position) {
    gathering->start(position, *providers[position]);
  }
  gathering->leave();
}

}  // namespace velmora
