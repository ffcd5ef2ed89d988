#include "CommandLineContext.h"
#include "platform/posix/PosixPathStandardizer.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

const PosixPathStandardizer standardizer;

TEST(CommandLineContexts, offerTheirProvidersAsOneItem) {
  const CommandLineContext context({"/a", "/b"}, standardizer, [] {});
  const std::vector<InputItem> items = context.inputItems();
  ASSERT_EQ(items.size(), 1U);
  EXPECT_EQ(std::get<ExtensionItem>(items[0]).attachments->size(), 2U);
}

TEST(CommandLineContexts, tellHowTheRequestEnded) {
  int endCount = 0;
  CommandLineContext completed({}, standardizer, [&] { ++endCount; });
  EXPECT_FALSE(completed.outcome().has_value());
  completed.completeRequest();
  ASSERT_TRUE(completed.outcome().has_value());
  EXPECT_EQ(completed.outcome()->error, std::nullopt);
  EXPECT_EQ(endCount, 1);

  const RequestError error = {.domain = "d", .code = 2, .localizedDescription = "text"};
  CommandLineContext cancelled({}, standardizer, [&] { ++endCount; });
  cancelled.cancelRequest(error);
  ASSERT_TRUE(cancelled.outcome().has_value());
  EXPECT_EQ(cancelled.outcome()->error, error);
  EXPECT_EQ(endCount, 2);
}

}  // namespace
}  // namespace velmora
