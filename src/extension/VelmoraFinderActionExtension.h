// The principal class: what the extension host creates and hands its requests to.
#pragma once

#include "platform/Platform.h"

#include <memory>

namespace velmora {

class ExtensionContext;

/// Keeps nothing of a request and is captured by none: a request goes on when the object is gone.
/// Any number of requests may be in flight; they share nothing but the file system.
class VelmoraFinderActionExtension {
 public:
  /// What `platform` refers to outlives every request.
  explicit VelmoraFinderActionExtension(const Platform& platform) : platform_(platform) {}

  /// Serves one request (see beginRequest); returns once its loads are started. Called on any
  /// thread, once for each request. Never throws.
  void beginRequestWithExtensionContext(
      const std::shared_ptr<ExtensionContext>& context) const noexcept;

 private:
  Platform platform_;
};

}  // namespace velmora
