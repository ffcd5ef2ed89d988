#include "platform/macos/MacMainQueue.h"
#include "tests/contracts/MainQueueContract.h"
#include "tests/gnustep/SharedObjects.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

class MacQueueAdapter {
 public:
  MainQueue& queue() { return queue_; }
  static void runPending() { runMainQueue(); }

 private:
  MacMainQueue queue_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, MainQueueContract, MacQueueAdapter);

}  // namespace
}  // namespace velmora
