#include "platform/macos/MacExtensionContext.h"

#include "platform/macos/ExceptionBarrier.h"
#include "platform/macos/FoundationText.h"
#include "platform/macos/MacItemProvider.h"

#include <utility>

namespace velmora {

namespace {

std::vector<std::shared_ptr<ItemProvider>> itemProviders(NSArray* attachments) {
  std::vector<std::shared_ptr<ItemProvider>> providers;
  for (id attachment in attachments) {
    if ([attachment isKindOfClass:[NSItemProvider class]]) {
      providers.push_back(
          std::make_shared<MacItemProvider>(static_cast<NSItemProvider*>(attachment)));
    }
  }
  return providers;
}

InputItem inputItem(id object) {
  if (![object isKindOfClass:[NSExtensionItem class]]) {
    return ForeignObject();
  }
  NSArray* attachments = [static_cast<NSExtensionItem*>(object) attachments];
  if (attachments == nil) {
    return ExtensionItem();
  }
  return ExtensionItem{.attachments = itemProviders(attachments)};
}

NSError* foundationError(const RequestError& error) {
  NSDictionary* description =
      @{NSLocalizedDescriptionKey : readableString(error.localizedDescription)};
  return [NSError errorWithDomain:readableString(error.domain)
                             code:error.code
                         userInfo:description];
}

}  // namespace

MacExtensionContext::MacExtensionContext(NSExtensionContext* host)
    : host_(ObjectHolder<NSExtensionContext>::retaining(host)) {}

std::vector<InputItem> MacExtensionContext::inputItems() const {
  @autoreleasepool {
    const auto objects = ObjectHolder<NSArray>::adopting([[host_.get() inputItems] copy]);
    std::vector<InputItem> items;
    for (id object in objects.get()) {
      items.push_back(inputItem(object));
    }
    return items;
  }
}

void MacExtensionContext::completeRequest() noexcept {
  attempt([this] {
    @autoreleasepool {
      [host_.get() completeRequestReturningItems:@[] completionHandler:nil];
    }
  });
}

void MacExtensionContext::cancelRequest(const RequestError& error) noexcept {
  attempt([this, &error] {
    @autoreleasepool {
      [host_.get() cancelRequestWithError:foundationError(error)];
    }
  });
}

}  // namespace velmora
