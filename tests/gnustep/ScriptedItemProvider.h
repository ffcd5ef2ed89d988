// An attachment with a script of the test, which decides on the delivered item, its time and its
// thread. For Objective-C++ only.
#pragma once

#import <Foundation/Foundation.h>

#include <functional>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

/// Shares the ownership of a completion handler, so that it can be called later and on other
/// threads. Everything that the handler has captured lives as long.
class HeldCompletionHandler {
 public:
  explicit HeldCompletionHandler(NSItemProviderCompletionHandler handler)
      : handler_(Block_copy(handler)) {}
  HeldCompletionHandler(const HeldCompletionHandler& other)
      : handler_(Block_copy(other.handler_)) {}
  HeldCompletionHandler(HeldCompletionHandler&& other) noexcept
      : handler_(std::exchange(other.handler_, nil)) {}
  HeldCompletionHandler& operator=(HeldCompletionHandler other) noexcept {
    std::swap(handler_, other.handler_);
    return *this;
  }
  ~HeldCompletionHandler() {
    if (handler_ != nil) {
      Block_release(handler_);
    }
  }

  void operator()(id<NSSecureCoding> item, NSError* error) const { handler_(item, error); }

 private:
  NSItemProviderCompletionHandler handler_;
};

/// Runs within loadItemForTypeIdentifier:options:completionHandler:. The handler is valid during
/// this call. A script that keeps the handler longer needs a HeldCompletionHandler.
using LoadScript = std::function<void(NSItemProviderCompletionHandler handler)>;

/// The arguments with which an item was loaded.
struct RecordedLoad {
  std::string typeIdentifier;
  bool hasOptions = false;

  bool operator==(const RecordedLoad&) const = default;
  friend std::ostream& operator<<(std::ostream& stream, const RecordedLoad& load) {
    return stream << load.typeIdentifier << (load.hasOptions ? " with options" : "");
  }
};

/// The record of a provider. Outlives the provider. Any thread may call it.
class ProviderRecord {
 public:
  std::vector<RecordedLoad> loads() const;
  /// Whether the last owner has released the provider.
  bool deallocated() const;

  void add(const RecordedLoad& load);
  void setDeallocated();

 private:
  mutable std::mutex mutex_;
  std::vector<RecordedLoad> loads_;
  bool deallocated_ = false;
};

struct ScriptedItemProviderState;

}  // namespace velmora

@interface ScriptedItemProvider : NSItemProvider {
 @private
  velmora::ScriptedItemProviderState* state;
}

/// Conforms to these types only.
- (instancetype)initWithTypes:(const std::vector<std::string>&)typeIdentifiers
                       script:(velmora::LoadScript)script;

- (std::shared_ptr<const velmora::ProviderRecord>)record;

@end
