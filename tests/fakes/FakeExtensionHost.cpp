#include "tests/fakes/FakeExtensionHost.h"

#include <gtest/gtest.h>

#include <utility>

namespace velmora {

FakeItemProvider::FakeItemProvider(Script script) : script_(std::move(script)) {}

FakeItemProvider::~FakeItemProvider() = default;

bool FakeItemProvider::hasItemConformingTo(std::string_view typeIdentifier) const {
  return conformsToFileURL && typeIdentifier == "public.file-url";
}

void FakeItemProvider::loadItem(std::string_view typeIdentifier, LoadCompletion completion) {
  EXPECT_EQ(typeIdentifier, "public.file-url");
  script_(std::move(completion));
}

std::shared_ptr<FakeItemProvider> answering(LoadedItem item) {
  return std::make_shared<FakeItemProvider>(
      [item = std::move(item)](const ItemProvider::LoadCompletion& completion) {
        completion(item, nullptr);
      });
}

std::shared_ptr<FakeItemProvider> answeringPath(const char* path) {
  return answering(FileURL{.path = path});
}

PendingLoad::PendingLoad() : completion_(std::make_shared<ItemProvider::LoadCompletion>()) {}

PendingLoad::~PendingLoad() { *completion_ = nullptr; }

std::shared_ptr<FakeItemProvider> PendingLoad::provider() const {
  return std::make_shared<FakeItemProvider>(
      [kept = completion_](ItemProvider::LoadCompletion given) { *kept = std::move(given); });
}

bool PendingLoad::hasStarted() const { return *completion_ != nullptr; }

void PendingLoad::answer(const LoadedItem& item) const { (*completion_)(item, nullptr); }

void PendingLoad::answerPath(const char* path) const { answer(FileURL{.path = path}); }

FakeExtensionContext::FakeExtensionContext(std::vector<InputItem> items)
    : ends(std::make_shared<RequestEnds>()), items_(std::move(items)) {}

FakeExtensionContext::~FakeExtensionContext() = default;

std::vector<InputItem> FakeExtensionContext::inputItems() const { return items_; }

void FakeExtensionContext::completeRequest() noexcept {
  ++ends->completedCount;
  if (ends->journal != nullptr) {
    ends->journal->emplace_back("complete");
  }
}

void FakeExtensionContext::cancelRequest(const RequestError& error) noexcept {
  ++ends->cancelledCount;
  const std::lock_guard guard(ends->lock);
  ends->errors.push_back(error);
  if (ends->journal != nullptr) {
    ends->journal->push_back("cancel " + std::to_string(error.code));
  }
}

std::shared_ptr<FakeExtensionContext> contextWith(
    std::vector<std::shared_ptr<ItemProvider>> attachments) {
  return std::make_shared<FakeExtensionContext>(
      std::vector<InputItem>{ExtensionItem{.attachments = std::move(attachments)}});
}

}  // namespace velmora
