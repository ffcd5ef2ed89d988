#include "CommandLineContext.h"
#include "tests/fakes/FakeExtensionHost.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(CommandLineContexts, offerTheirProvidersAsOneItem) {
  const std::vector<std::shared_ptr<ItemProvider>> providers = {answeringPath("/a")};
  const CommandLineContext context(providers, [] {});
  const std::vector<InputItem> items = context.inputItems();
  ASSERT_EQ(items.size(), 1U);
  EXPECT_EQ(std::get<ExtensionItem>(items[0]).attachments, providers);
}

TEST(CommandLineContexts, tellHowTheRequestEnded) {
  int endCount = 0;
  CommandLineContext completed({}, [&] { ++endCount; });
  EXPECT_FALSE(completed.outcome().has_value());
  completed.completeRequest();
  ASSERT_TRUE(completed.outcome().has_value());
  EXPECT_EQ(completed.outcome()->error, std::nullopt);
  EXPECT_EQ(endCount, 1);

  const RequestError error = {.domain = "d", .code = 2, .localizedDescription = "text"};
  CommandLineContext cancelled({}, [&] { ++endCount; });
  cancelled.cancelRequest(error);
  ASSERT_TRUE(cancelled.outcome().has_value());
  EXPECT_EQ(cancelled.outcome()->error, error);
  EXPECT_EQ(endCount, 2);
}

}  // namespace
}  // namespace velmora
