// The request of an extension host. For Objective-C++ only.
#pragma once

#include "platform/ExtensionContext.h"
#include "platform/macos/ObjectHolder.h"

#import <Foundation/Foundation.h>

namespace velmora {

class MacExtensionContext final : public ExtensionContext {
 public:
  /// Retains `host`.
  explicit MacExtensionContext(NSExtensionContext* host);

  std::vector<InputItem> inputItems() const override;
  void completeRequest() noexcept override;
  void cancelRequest(const RequestError& error) noexcept override;

 private:
  ObjectHolder<NSExtensionContext> host_;
};

}  // namespace velmora
