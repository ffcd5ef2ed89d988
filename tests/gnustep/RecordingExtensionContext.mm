#import "tests/gnustep/RecordingExtensionContext.h"

#include "tests/gnustep/Strings.h"

namespace velmora {

namespace {

std::map<std::string, std::string> texts(NSDictionary* dictionary) {
  std::map<std::string, std::string> result;
  for (NSString* key in dictionary) {
    result[utf8(key)] = utf8([[dictionary objectForKey:key] description]);
  }
  return result;
}

std::optional<RecordedError> recorded(NSError* error) {
  if (error == nil) {
    return std::nullopt;
  }
  return RecordedError{
      .domain = utf8([error domain]), .code = [error code], .userInfo = texts([error userInfo])};
}

}  // namespace

std::vector<RecordedCompletion> ContextRecord::completions() const {
  const std::lock_guard lock(mutex_);
  return completions_;
}

std::vector<RecordedCancellation> ContextRecord::cancellations() const {
  const std::lock_guard lock(mutex_);
  return cancellations_;
}

bool ContextRecord::deallocated() const {
  const std::lock_guard lock(mutex_);
  return deallocated_;
}

void ContextRecord::add(const RecordedCompletion& completion) {
  const std::lock_guard lock(mutex_);
  completions_.push_back(completion);
}

void ContextRecord::add(const RecordedCancellation& cancellation) {
  const std::lock_guard lock(mutex_);
  cancellations_.push_back(cancellation);
}

void ContextRecord::setDeallocated() {
  const std::lock_guard lock(mutex_);
  deallocated_ = true;
}

}  // namespace velmora

@implementation RecordingExtensionContext

- (instancetype)initWithInputItems:(NSArray*)inputItems {
  self = [super init];
  if (self != nil) {
    record = new std::shared_ptr(std::make_shared<velmora::ContextRecord>());
    [self setInputItems:inputItems];
  }
  return self;
}

- (void)dealloc {
  (*record)->setDeallocated();
  delete record;
  [super dealloc];
}

- (std::shared_ptr<const velmora::ContextRecord>)record {
  return *record;
}

- (void)completeRequestReturningItems:(NSArray*)items
                    completionHandler:(void (^)(BOOL expired))completionHandler {
  velmora::RecordedCompletion completion;
  if (items != nil) {
    completion.itemCount = [items count];
  }
  completion.hasCompletionHandler = completionHandler != nil;
  completion.thread = std::this_thread::get_id();
  (*record)->add(completion);
}

- (void)cancelRequestWithError:(NSError*)error {
  (*record)->add(velmora::RecordedCancellation{.error = velmora::recorded(error),
                                               .thread = std::this_thread::get_id()});
}

@end
