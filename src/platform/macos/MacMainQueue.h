// The main dispatch queue, which the extension host serves.
#pragma once

#include "platform/MainQueue.h"

namespace velmora {

/// A task that throws ends the process, because no caller can catch the exception.
class MacMainQueue final : public MainQueue {
 public:
  void async(std::function<void()> task) override;
};

}  // namespace velmora
