#include "platform/posix/PosixPathStandardizer.h"
#include "tests/contracts/ExtensionHostContract.h"
#include "velmora-finder-action/CommandLineContext.h"

namespace velmora {
namespace {

class CommandLineContextAdapter {
 public:
  ExtensionContext& context() { return context_; }
  int endCount() const { return endCount_; }
  std::optional<RequestError> error() const { return context_.outcome().value().error; }

 private:
  int endCount_ = 0;
  PosixPathStandardizer standardizer_;
  CommandLineContext context_{{"/a", "/b"}, standardizer_, [this] { ++endCount_; }};
};

INSTANTIATE_TYPED_TEST_SUITE_P(CommandLine, ExtensionHostContract, CommandLineContextAdapter);

TEST(CommandLineContexts, haveNoOutcomeWhileTheRequestIsServed) {
  const PosixPathStandardizer standardizer;
  const CommandLineContext context({"/a"}, standardizer, [] {});
  EXPECT_FALSE(context.outcome().has_value());
}

}  // namespace
}  // namespace velmora
