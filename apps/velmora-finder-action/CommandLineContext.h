// The request that a command line makes, in the place of an extension host's.
#pragma once

#include "platform/ExtensionContext.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

class PathStandardizer;

/// How the request ended: without an error when it was completed.
struct Outcome {
  std::optional<RequestError> error;
};

class CommandLineContext final : public ExtensionContext {
 public:
  /// The selection is what the operands stand for, in their order; `standardizer` outlives the
  /// request. Calls `whenEnded` once, on the thread that ends the request. It must not throw.
  CommandLineContext(std::vector<std::string> operands, const PathStandardizer& standardizer,
                     std::function<void()> whenEnded);

  std::vector<InputItem> inputItems() const override;
  void completeRequest() noexcept override;
  void cancelRequest(const RequestError& error) noexcept override;

  /// None as long as the request is being served.
  const std::optional<Outcome>& outcome() const { return outcome_; }

 private:
  std::vector<std::string> operands_;
  const PathStandardizer& standardizer_;
  std::function<void()> whenEnded_;
  std::optional<Outcome> outcome_;
};

}  // namespace velmora
