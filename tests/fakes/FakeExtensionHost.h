// The extension host, which cannot be had: scripted providers, and a context that keeps a record.
#pragma once

#include "platform/ExtensionContext.h"
#include "platform/ItemProvider.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

namespace velmora {

/// Does with the completion what the test's script says: call it, keep it, throw.
class FakeItemProvider final : public ItemProvider {
 public:
  using Script = std::function<void(LoadCompletion)>;

  explicit FakeItemProvider(Script script);
  ~FakeItemProvider() override;

  bool conformsToFileURL = true;

  bool hasItemConformingTo(std::string_view typeIdentifier) const override;
  void loadItem(std::string_view typeIdentifier, LoadCompletion completion) override;

 private:
  Script script_;
};

/// Answers within the call that starts the load.
std::shared_ptr<FakeItemProvider> answering(LoadedItem item);
std::shared_ptr<FakeItemProvider> answeringPath(const char* path);

/// Keeps what it is given for the test to call.
class PendingLoad {
 public:
  PendingLoad();
  PendingLoad(const PendingLoad&) = delete;
  PendingLoad& operator=(const PendingLoad&) = delete;
  /// A load that never ends would keep its request for ever, and the request its provider.
  ~PendingLoad();

  std::shared_ptr<FakeItemProvider> provider() const;
  bool hasStarted() const;
  void answer(const LoadedItem& item) const;
  void answerPath(const char* path) const;

 private:
  std::shared_ptr<ItemProvider::LoadCompletion> completion_;
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
  explicit FakeExtensionContext(std::vector<InputItem> items);
  ~FakeExtensionContext() override;

  const std::shared_ptr<RequestEnds> ends;

  std::vector<InputItem> inputItems() const override;
  void completeRequest() noexcept override;
  void cancelRequest(const RequestError& error) noexcept override;

 private:
  std::vector<InputItem> items_;
};

/// A context with one input item that has these attachments.
std::shared_ptr<FakeExtensionContext> contextWith(
    std::vector<std::shared_ptr<ItemProvider>> attachments);

}  // namespace velmora
