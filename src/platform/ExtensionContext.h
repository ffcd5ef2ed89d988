// One request of the extension host: its input, and its completion or cancellation.
#pragma once

#include "platform/ItemProvider.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace velmora {

/// The error that cancels a request, as the user sees it.
struct RequestError {
  std::string domain = {};
  int code = 0;
  /// The only content of the error's user information.
  std::string localizedDescription = {};

  bool operator==(const RequestError&) const = default;
};

/// An input item; the list of attachments may be missing.
struct ExtensionItem {
  std::optional<std::vector<std::shared_ptr<ItemProvider>>> attachments;
};

/// An object among the input items that is not an extension item.
struct ForeignObject {};

using InputItem = std::variant<ExtensionItem, ForeignObject>;

/// Lives at least until the request has ended; all code that still serves the request shares its
/// ownership. Exactly one of completeRequest and cancelRequest is called, and only once. That call
/// comes on the main queue or within the call that began the request; it comes on another thread
/// only when memory ran out.
class ExtensionContext {
 public:
  virtual ~ExtensionContext() = default;

  /// The selected items in their order, the same at every call.
  virtual std::vector<InputItem> inputItems() const = 0;

  /// Ends the request successfully, returning an empty list of items. Never throws.
  virtual void completeRequest() noexcept = 0;

  /// Ends the request with an error that the user sees. Never throws.
  virtual void cancelRequest(const RequestError& error) noexcept = 0;
};

}  // namespace velmora
