#include "platform/macos/MacItemProvider.h"

#include "platform/macos/ExceptionBarrier.h"
#include "platform/macos/FoundationText.h"

#include <memory>
#include <optional>
#include <utility>

namespace velmora {

namespace {

LoadedItem loadedURL(NSURL* url) {
  NSURL* byPath = [url isFileURL] != NO ? [url filePathURL] : url;
  std::optional<std::string> text = utf8Of([byPath absoluteString]);
  if (!text) {
    return UnusableItem();
  }
  return URLObject{*std::move(text)};
}

LoadedItem loadedData(NSData* data) {
  // Foundation does not define a URL for empty data.
  if ([data length] == 0) {
    return UnusableItem();
  }
  return loadedURL([NSURL absoluteURLWithDataRepresentation:data relativeToURL:nil]);
}

LoadedItem loadedItem(id item) {
  if (item == nil) {
    return {};
  }
  if ([item isKindOfClass:[NSURL class]]) {
    return loadedURL(static_cast<NSURL*>(item));
  }
  if ([item isKindOfClass:[NSData class]]) {
    return loadedData(static_cast<NSData*>(item));
  }
  return UnusableItem();
}

std::optional<PlatformError> platformError(NSError* error) {
  if (error == nil) {
    return std::nullopt;
  }
  return PlatformError(
      utf8Of([error domain]).value_or(""), static_cast<int>([error code]),
      utf8Of([error localizedDescription]).value_or(""),
      std::make_shared<ObjectHolder<NSError>>(ObjectHolder<NSError>::retaining(error)));
}

void deliver(id item, NSError* error, const ItemProvider::LoadCompletion& completion) noexcept {
  const AttemptResult result = attempt([&] {
    const std::optional<PlatformError> reported = platformError(error);
    completion(loadedItem(item), reported ? &*reported : nullptr);
  });
  if (result == AttemptResult::ranOutOfMemory) {
    completion(OutOfMemory(), nullptr);
  } else if (result == AttemptResult::failed) {
    completion(UnusableItem(), nullptr);
  }
}

}  // namespace

MacItemProvider::MacItemProvider(NSItemProvider* provider)
    : provider_(ObjectHolder<NSItemProvider>::retaining(provider)) {}

bool MacItemProvider::hasItemConformingTo(std::string_view typeIdentifier) const {
  @autoreleasepool {
    return
        [provider_.get() hasItemConformingToTypeIdentifier:foundationString(typeIdentifier)] != NO;
  }
}

void MacItemProvider::loadItem(std::string_view typeIdentifier, LoadCompletion completion) {
  // Shared, because the provider copies the block, and that copy must not throw.
  const auto shared = std::make_shared<const LoadCompletion>(std::move(completion));
  @autoreleasepool {
    [provider_.get() loadItemForTypeIdentifier:foundationString(typeIdentifier)
                                       options:nil
                             completionHandler:^(id<NSSecureCoding> item, NSError* error) {
                               @autoreleasepool {
                                 deliver(item, error, *shared);
                               }
                             }];
  }
}

}  // namespace velmora
