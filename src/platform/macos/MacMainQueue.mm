#include "platform/macos/MacMainQueue.h"

#import <Foundation/Foundation.h>
#include <dispatch/dispatch.h>

#include <memory>
#include <utility>

namespace velmora {

namespace {

using Task = std::function<void()>;

void runTask(void* context) noexcept {
  const std::unique_ptr<Task> task(static_cast<Task*>(context));
  @autoreleasepool {
    (*task)();
  }
}

}  // namespace

void MacMainQueue::async(std::function<void()> task) {
  auto owned = std::make_unique<Task>(std::move(task));
  dispatch_async_f(dispatch_get_main_queue(), owned.release(), runTask);
}

}  // namespace velmora
