#include "CommandLineContext.h"

#include <new>
#include <utility>

namespace velmora {

CommandLineContext::CommandLineContext(std::vector<std::shared_ptr<ItemProvider>> providers,
                                       std::function<void()> whenEnded)
    : providers_(std::move(providers)), whenEnded_(std::move(whenEnded)) {}

std::vector<InputItem> CommandLineContext::inputItems() const {
  return {ExtensionItem{.attachments = providers_}};
}

void CommandLineContext::completeRequest() noexcept {
  outcome_ = Outcome{};
  whenEnded_();
}

void CommandLineContext::cancelRequest(const RequestError& error) noexcept {
  try {
    outcome_ = Outcome{.error = error};
  } catch (const std::bad_alloc&) {
    outcome_ = Outcome{.error = RequestError{.code = error.code}};
  }
  whenEnded_();
}

}  // namespace velmora
