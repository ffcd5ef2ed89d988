#import "tests/gnustep/ScriptedItemProvider.h"

#include "tests/gnustep/Strings.h"

#include <algorithm>

namespace velmora {

std::vector<RecordedLoad> ProviderRecord::loads() const {
  const std::lock_guard lock(mutex_);
  return loads_;
}

bool ProviderRecord::deallocated() const {
  const std::lock_guard lock(mutex_);
  return deallocated_;
}

void ProviderRecord::add(const RecordedLoad& load) {
  const std::lock_guard lock(mutex_);
  loads_.push_back(load);
}

void ProviderRecord::setDeallocated() {
  const std::lock_guard lock(mutex_);
  deallocated_ = true;
}

struct ScriptedItemProviderState {
  std::vector<std::string> typeIdentifiers;
  LoadScript script;
  std::shared_ptr<ProviderRecord> record = std::make_shared<ProviderRecord>();
};

}  // namespace velmora

@implementation ScriptedItemProvider

/// Does not call the library's initialiser, because that one returns nil.
- (instancetype)init {
  return [self initWithTypes:{} script:{}];
}

- (instancetype)initWithTypes:(const std::vector<std::string>&)typeIdentifiers
                       script:(velmora::LoadScript)script {
  state = new velmora::ScriptedItemProviderState{.typeIdentifiers = typeIdentifiers,
                                                 .script = std::move(script)};
  return self;
}

- (void)dealloc {
  state->record->setDeallocated();
  delete state;
  [super dealloc];
}

/// A provider never changes, so a copy is the same object.
- (id)copyWithZone:(NSZone*)zone {
  return [self retain];
}

- (std::shared_ptr<const velmora::ProviderRecord>)record {
  return state->record;
}

- (NSArray*)registeredTypeIdentifiers {
  NSMutableArray* identifiers = [NSMutableArray array];
  for (const std::string& identifier : state->typeIdentifiers) {
    [identifiers addObject:velmora::nsString(identifier)];
  }
  return identifiers;
}

- (BOOL)hasItemConformingToTypeIdentifier:(NSString*)typeIdentifier {
  return std::ranges::find(state->typeIdentifiers, velmora::utf8(typeIdentifier)) !=
         state->typeIdentifiers.end();
}

- (void)loadItemForTypeIdentifier:(NSString*)typeIdentifier
                          options:(NSDictionary*)options
                completionHandler:(NSItemProviderCompletionHandler)completionHandler {
  state->record->add(
      {.typeIdentifier = velmora::utf8(typeIdentifier), .hasOptions = options != nil});
  if (state->script) {
    state->script(completionHandler);
  }
}

@end
