// The principal class, which the extension host creates and passes its requests to.
#pragma once

#include "platform/Platform.h"

#include <memory>

namespace velmora {

class ExtensionContext;

/// Stores nothing of a request, and no request refers to it: requests continue after its
/// destruction. Any number of requests may run at the same time; they share only the file system.
class VelmoraFinderActionExtension {
 public:
  /// The objects that `platform` refers to must outlive every request.
  explicit VelmoraFinderActionExtension(const Platform& platform) : platform_(platform) {}

  /// Serves one request (see beginRequest), and returns when its loads are started. Called on any
  /// thread, once per request. Never throws.
  void beginRequestWithExtensionContext(
      const std::shared_ptr<ExtensionContext>& context) const noexcept;

 private:
  Platform platform_;
};

}  // namespace velmora
