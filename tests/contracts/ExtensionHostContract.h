// The contract of every ExtensionContext and its ItemProviders. Instantiated with an adapter for
// each implementation.
#pragma once

#include "extension/SelectionGathering.h"
#include "platform/ExtensionContext.h"

#include <gtest/gtest.h>

#include <optional>
#include <variant>
#include <vector>

namespace velmora {

/// An adapter is a request for the folders /a and /b. It has `ExtensionContext& context()`, `int
/// endCount()`, and `std::optional<RequestError> error()`, the error of the cancellation.
template <class Adapter>
class ExtensionHostContract : public testing::Test {};

TYPED_TEST_SUITE_P(ExtensionHostContract);

TYPED_TEST_P(ExtensionHostContract, deliversEachFileURLOnceInOrderAtEveryCall) {
  TypeParam adapter;
  for (int call = 0; call < 2; ++call) {
    std::vector<FileURL> urls;
    for (const InputItem& item : adapter.context().inputItems()) {
      for (const auto& provider : std::get<ExtensionItem>(item).attachments.value()) {
        EXPECT_TRUE(provider->hasItemConformingTo("public.file-url"));
        EXPECT_FALSE(provider->hasItemConformingTo("public.image"));
        provider->loadItem(fileURLTypeIdentifier,
                           [&urls](const LoadedItem& loaded, const PlatformError* error) {
                             EXPECT_EQ(error, nullptr);
                             urls.push_back(fileURLFromLoadedItem(loaded).value());
                           });
      }
    }
    EXPECT_EQ(urls, (std::vector<FileURL>{{"/a"}, {"/b"}}));
  }
}

TYPED_TEST_P(ExtensionHostContract, endsWithoutAnErrorWhenCompleted) {
  TypeParam adapter;
  EXPECT_EQ(adapter.endCount(), 0);
  adapter.context().completeRequest();
  EXPECT_EQ(adapter.endCount(), 1);
  EXPECT_EQ(adapter.error(), std::nullopt);
}

TYPED_TEST_P(ExtensionHostContract, endsWithTheErrorWhenCancelled) {
  TypeParam adapter;
  const RequestError error = {.domain = "d", .code = 2, .localizedDescription = "text"};
  adapter.context().cancelRequest(error);
  EXPECT_EQ(adapter.endCount(), 1);
  EXPECT_EQ(adapter.error(), error);
}

REGISTER_TYPED_TEST_SUITE_P(ExtensionHostContract, deliversEachFileURLOnceInOrderAtEveryCall,
                            endsWithoutAnErrorWhenCompleted, endsWithTheErrorWhenCancelled);

}  // namespace velmora
