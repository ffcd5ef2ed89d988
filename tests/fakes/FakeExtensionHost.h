// The extension host, which cannot be had: scripted providers, and a context that keeps a record.
#pragma once

#include "platform/ExtensionContext.h"
#include "platform/ItemProvider.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace velmora {

/// Does with the completion what the test's script says: call it, keep it, throw.
class FakeItemProvider final : public ItemProvider {
 public:
  using Script = std::function<void(LoadCompletion)>;

  explicit FakeItemProvider(Script script) : script_(std::move(script)) {}

  bool conformsToFileURL = true;

  bool hasItemConformingTo(std::string_view typeIdentifier) const override {
    return conformsToFileURL && typeIdentifier == "public.file-url";
  }

  void loadItem(std::string_view typeIdentifier, LoadCompletion completion) override {
    EXPECT_EQ(typeIdentifier, "public.file-url");
    script_(std::move(completion));
  }

 private:
  Script script_;
};

/// Answers within the call that starts the load.
inline std::shared_ptr<FakeItemProvider> answering(LoadedItem item) {
  return std::make_shared<FakeItemProvider>(
      [item = std::move(item)](const ItemProvider::LoadCompletion& completion) {
        completion(item, nullptr);
      });
}

inline std::shared_ptr<FakeItemProvider> answeringPath(const char* path) {
  return answering(FileURL{.path = path});
}

/// Keeps what it is given for the test to call.
class PendingLoad {
 public:
  PendingLoad() = default;
  PendingLoad(const PendingLoad&) = delete;
  PendingLoad& operator=(const PendingLoad&) = delete;
  /// A load that never ends would keep its request for ever, and the request its provider.
  ~PendingLoad() { *completion_ = nullptr; }

  std::shared_ptr<FakeItemProvider> provider() const {
    return std::make_shared<FakeItemProvider>(
        [kept = completion_](ItemProvider::LoadCompletion given) { *kept = std::move(given); });
  }

  bool hasStarted() const { return *completion_ != nullptr; }
  void answer(const LoadedItem& item) const { (*completion_)(item, nullptr); }
  void answerPath(const char* path) const { answer(FileURL{.path = path}); }

 private:
  std::shared_ptr<ItemProvider::LoadCompletion> completion_ =
      std::make_shared<ItemProvider::LoadCompletion>();
};

/// How a request ended, as often as it did.
struct RequestEnds {
  std::atomic<int> completedCount = 0;
  std::atomic<int> cancelledCount = 0;
  std::mutex lock;
  std::vector<RequestError> errors;

  int count() const { return completedCount + cancelledCount; }
};

/// Keeps its record outside of itself, so that a test can see the context go.
class FakeExtensionContext final : public ExtensionContext {
 public:
  explicit FakeExtensionContext(std::vector<InputItem> items)
      : ends(std::make_shared<RequestEnds>()), items_(std::move(items)) {}

  const std::shared_ptr<RequestEnds> ends;

  std::vector<InputItem> inputItems() const override { return items_; }

  void completeRequest() noexcept override { ++ends->completedCount; }

  void cancelRequest(const RequestError& error) noexcept override {
    ++ends->cancelledCount;
    const std::lock_guard guard(ends->lock);
    ends->errors.push_back(error);
  }

 private:
  std::vector<InputItem> items_;
};

/// A context with one input item that has these attachments.
inline std::shared_ptr<FakeExtensionContext> contextWith(
    std::vector<std::shared_ptr<ItemProvider>> attachments) {
  return std::make_shared<FakeExtensionContext>(
      std::vector<InputItem>{ExtensionItem{.attachments = std::move(attachments)}});
}

}  // namespace velmora
