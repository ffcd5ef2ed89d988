// The request of a command line. On macOS, the extension host makes the request instead.
#pragma once

#include "platform/ExtensionContext.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

class PathStandardizer;

/// The end of the request. There is no error if the request was completed.
struct Outcome {
  std::optional<RequestError> error;
};

class CommandLineContext final : public ExtensionContext {
 public:
  /// The selection is the items that the operands name, in their order. `standardizer` must outlive
  /// the request. Calls `whenEnded` once, on the thread that ends the request. `whenEnded` must not
  /// throw.
  CommandLineContext(std::vector<std::string> operands, const PathStandardizer& standardizer,
                     std::function<void()> whenEnded);

  std::vector<InputItem> inputItems() const override;
  void completeRequest() noexcept override;
  void cancelRequest(const RequestError& error) noexcept override;

  /// None until the request has ended.
  const std::optional<Outcome>& outcome() const { return outcome_; }

 private:
  std::vector<std::string> operands_;
  const PathStandardizer& standardizer_;
  std::function<void()> whenEnded_;
  std::optional<Outcome> outcome_;
};

}  // namespace velmora
