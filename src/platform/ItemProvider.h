// One selected item as the extension host offers it: a promise of a file URL, loaded on request.
#pragma once

#include "platform/PlatformError.h"
#include "text/FileURL.h"

#include <functional>
#include <string>
#include <string_view>
#include <variant>

namespace velmora {

/// The type of an attachment that can be loaded as a file URL.
inline constexpr std::string_view fileURLTypeIdentifier = "public.file-url";

/// A URL object of the system, or bytes that represent one, as its absolute text.
struct URLObject {
  std::string absoluteText;
};

/// Anything else that a provider may deliver: a string, a dictionary, an image.
struct UnusableItem {};

/// An item that could not be delivered for lack of memory.
struct OutOfMemory {};

/// The item that a provider delivered; `std::monostate` when it delivered none.
using LoadedItem = std::variant<std::monostate, FileURL, URLObject, UnusableItem, OutOfMemory>;

class ItemProvider {
 public:
  /// Receives the item and the error that the load reported; both, either or neither may be
  /// present. The error is valid during the call only.
  using LoadCompletion = std::function<void(const LoadedItem& item, const PlatformError* error)>;

  virtual ~ItemProvider() = default;

  /// Whether the item can be loaded as `typeIdentifier`.
  virtual bool hasItemConformingTo(std::string_view typeIdentifier) const = 0;

  /// Starts loading the item and returns. `completion` is called on any thread: later, or within
  /// this call, or never. An exception means that nothing was loaded.
  virtual void loadItem(std::string_view typeIdentifier, LoadCompletion completion) = 0;
};

}  // namespace velmora
