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

/// A foreign URL object, or a blob of bytes that represents one, by its absolute text.
struct URLObject {
  std::string absoluteText;
};

/// Anything else that a provider may deliver: a string, a dictionary, an image.
struct UnusableItem {};

/// An item for which there was no memory when it was delivered.
struct OutOfMemory {};

/// What a provider delivered; `std::monostate` when it delivered nothing.
using LoadedItem = std::variant<std::monostate, FileURL, URLObject, UnusableItem, OutOfMemory>;

class ItemProvider {
 public:
  /// Receives the item and, when the load reported one, its error; both, either or neither may be
  /// there. The error lives for the call only.
  using LoadCompletion = std::function<void(const LoadedItem& item, const PlatformError* error)>;

  virtual ~ItemProvider() = default;

  /// Whether the item can be loaded as `typeIdentifier`.
  virtual bool hasItemConformingTo(std::string_view typeIdentifier) const = 0;

  /// Starts loading the item and returns. `completion` is called on any thread: later, or within
  /// this call, or never. An exception means that nothing was loaded.
  virtual void loadItem(std::string_view typeIdentifier, LoadCompletion completion) = 0;
};

}  // namespace velmora
