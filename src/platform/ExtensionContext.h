// One request of the extension host: what it hands in, and its two possible ends.
#pragma once

#include "platform/ItemProvider.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace velmora {

/// The error with which a request is cancelled, as the user gets to see it.
struct RequestError {
  std::string domain = {};
  int code = 0;
  /// The whole of the error's user information.
  std::string localizedDescription = {};

  bool operator==(const RequestError&) const = default;
};

/// An input item; the list of attachments may be missing.
struct ExtensionItem {
  std::optional<std::vector<std::shared_ptr<ItemProvider>>> attachments;
};

/// An object among the input items that is no extension item.
struct ForeignObject {};

using InputItem = std::variant<ExtensionItem, ForeignObject>;

/// Lives until the request has ended; whoever still serves it shares its ownership. Exactly one of
/// the two ends is called, once: on the main queue or within the call that began the request; on
/// another thread only where memory ran out.
class ExtensionContext {
 public:
  virtual ~ExtensionContext() = default;

  /// The selection, in its order. The same at every call.
  virtual std::vector<InputItem> inputItems() const = 0;

  /// Ends the request successfully, returning an empty list of items. Never throws.
  virtual void completeRequest() noexcept = 0;

  /// Ends the request with an error that the user gets to see. Never throws.
  virtual void cancelRequest(const RequestError& error) noexcept = 0;
};

}  // namespace velmora
