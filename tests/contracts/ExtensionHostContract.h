// What every ExtensionContext and its ItemProviders promise. Instantiated with an adapter for each
// implementation.
#pragma once

#include "extension/SelectionGathering.h"
#include "platform/ExtensionContext.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace velmora {

/// An adapter is a request for the folders /a and /b. It has `ExtensionContext& context()`,
/// `int endCount()`, and `std::optional<RequestError> error()`, the error it ended with.
template <class Adapter>
class ExtensionHostContract : public testing::Test {
 protected:
  std::vector<std::shared_ptr<ItemProvider>> attachments() {
    std::vector<std::shared_ptr<ItemProvider>> result;
    for (const InputItem& item : adapter.context().inputItems()) {
      const auto& list = std::get<ExtensionItem>(item).attachments.value();
      result.insert(result.end(), list.begin(), list.end());
    }
    return result;
  }

  /// What the providers deliver, each answer in turn.
  std::vector<FileURL> loadedURLs() {
    std::vector<FileURL> urls;
    for (const std::shared_ptr<ItemProvider>& provider : attachments()) {
      provider->loadItem(fileURLTypeIdentifier,
                         [&urls](const LoadedItem& item, const PlatformError* error) {
                           EXPECT_EQ(error, nullptr);
                           urls.push_back(fileURLFromLoadedItem(item).value());
                         });
    }
    return urls;
  }

  Adapter adapter;
};

TYPED_TEST_SUITE_P(ExtensionHostContract);

TYPED_TEST_P(ExtensionHostContract, offersFileURLsAndNothingElse) {
  for (const std::shared_ptr<ItemProvider>& provider : this->attachments()) {
    EXPECT_TRUE(provider->hasItemConformingTo("public.file-url"));
    EXPECT_FALSE(provider->hasItemConformingTo("public.image"));
  }
}

TYPED_TEST_P(ExtensionHostContract, deliversTheSelectionInOrderEachItemOnceAtEveryCall) {
  const std::vector<FileURL> selection = {{"/a"}, {"/b"}};
  EXPECT_EQ(this->loadedURLs(), selection);
  EXPECT_EQ(this->loadedURLs(), selection);
}

TYPED_TEST_P(ExtensionHostContract, endsWithoutAnErrorWhenCompleted) {
  EXPECT_EQ(this->adapter.endCount(), 0);
  this->adapter.context().completeRequest();
  EXPECT_EQ(this->adapter.endCount(), 1);
  EXPECT_EQ(this->adapter.error(), std::nullopt);
}

TYPED_TEST_P(ExtensionHostContract, endsWithTheErrorWhenCancelled) {
  const RequestError error = {.domain = "d", .code = 2, .localizedDescription = "text"};
  this->adapter.context().cancelRequest(error);
  EXPECT_EQ(this->adapter.endCount(), 1);
  EXPECT_EQ(this->adapter.error(), error);
}

REGISTER_TYPED_TEST_SUITE_P(ExtensionHostContract, offersFileURLsAndNothingElse,
                            deliversTheSelectionInOrderEachItemOnceAtEveryCall,
                            endsWithoutAnErrorWhenCompleted, endsWithTheErrorWhenCancelled);

}  // namespace velmora
