#include "CommandLineContext.h"

#include "common/SelectedItems.h"

#include <new>
#include <utility>

namespace velmora {

CommandLineContext::CommandLineContext(std::vector<std::string> operands,
                                       const PathStandardizer& standardizer,
                                       std::function<void()> whenEnded)
    : operands_(std::move(operands)),
      standardizer_(standardizer),
      whenEnded_(std::move(whenEnded)) {}

std::vector<InputItem> CommandLineContext::inputItems() const {
  return {ExtensionItem{.attachments = providersFromOperands(operands_, standardizer_)}};
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
