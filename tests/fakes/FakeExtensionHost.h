// A fake extension host: scripted providers, and a context that records its calls.
#pragma once

#include "platform/ExtensionContext.h"
#include "platform/ItemProvider.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Calls a script of the test with the completion handler. The script may call, keep, or ignore it,
/// or throw.
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

/// Keeps the completion handler, so that the test can call it later.
class PendingLoad {
 public:
  PendingLoad();
  PendingLoad(const PendingLoad&) = delete;
  PendingLoad& operator=(const PendingLoad&) = delete;
  /// Releases the completion handler. A load that never ended would keep its request alive, and the
  /// request its provider.
  ~PendingLoad();

  std::shared_ptr<FakeItemProvider> provider() const;
  bool hasStarted() const;
  void answer(const LoadedItem& item) const;
  void answerPath(const char* path) const;

 private:
  std::shared_ptr<ItemProvider::LoadCompletion> completion_;
};

/// The ends of a request, each time that it ended.
struct RequestEnds {
  std::atomic<int> completedCount = 0;
  std::atomic<int> cancelledCount = 0;
  std::mutex lock;
  std::vector<RequestError> errors;
  /// Events of other objects, too, if it is set: "complete", or "cancel" with the code.
  std::vector<std::string>* journal = nullptr;

  int count() const { return completedCount + cancelledCount; }
};

/// Keeps its record in a separate object, so that a test can see the context destroyed.
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
