// A request of the extension host that records its ends. For Objective-C++ only.
#pragma once

#import <Foundation/Foundation.h>

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

namespace velmora {

/// A call of completeRequestReturningItems:completionHandler:.
struct RecordedCompletion {
  /// std::nullopt for nil.
  std::optional<std::size_t> itemCount;
  bool hasCompletionHandler = false;
  std::thread::id thread;
};

struct RecordedError {
  std::string domain;
  long code = 0;
  /// The whole user information; a value that is no string is recorded by its description. The text
  /// of GNUstep's NSLocalizedDescriptionKey differs from Apple's.
  std::map<std::string, std::string> userInfo;

  bool operator==(const RecordedError&) const = default;
  friend std::ostream& operator<<(std::ostream& stream, const RecordedError& error) {
    stream << error.domain << ' ' << error.code;
    for (const auto& [key, value] : error.userInfo) {
      stream << ", " << key << ": " << value;
    }
    return stream;
  }
};

/// A call of cancelRequestWithError:.
struct RecordedCancellation {
  /// std::nullopt for nil.
  std::optional<RecordedError> error;
  std::thread::id thread;
};

/// The record of a request. Outlives the request. Any thread may call it.
class ContextRecord {
 public:
  std::vector<RecordedCompletion> completions() const;
  std::vector<RecordedCancellation> cancellations() const;
  /// Whether the last owner has released the request.
  bool deallocated() const;

  void add(const RecordedCompletion& completion);
  void add(const RecordedCancellation& cancellation);
  void setDeallocated();

 private:
  mutable std::mutex mutex_;
  std::vector<RecordedCompletion> completions_;
  std::vector<RecordedCancellation> cancellations_;
  bool deallocated_ = false;
};

}  // namespace velmora

/// Records several ends instead of refusing them.
@interface RecordingExtensionContext : NSExtensionContext {
 @private
  std::shared_ptr<velmora::ContextRecord>* record;
}

- (instancetype)initWithInputItems:(NSArray*)inputItems;

- (std::shared_ptr<const velmora::ContextRecord>)record;

@end
