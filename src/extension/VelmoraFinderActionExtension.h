// The principal class: what the extension host creates and hands its requests to.
#pragma once

#include "platform/Platform.h"

#include <memory>

namespace velmora {

class ExtensionContext;
class WarpedFolders;

/// Keeps nothing of a request and is captured by none: a request goes on when the object is gone.
/// Any number of requests may be in flight; they share nothing but the file system.
class VelmoraFinderActionExtension {
 public:
  /// What `platform` refers to and `warpedFolders` outlive every request.
  VelmoraFinderActionExtension(const Platform& platform, const WarpedFolders& warpedFolders)
      : platform_(platform), warpedFolders_(warpedFolders) {}

  /// Serves one request (see beginRequest); returns once its loads are started. Called on any
  /// thread, once for each request. Never throws.
  void beginRequestWithExtensionContext(
      const std::shared_ptr<ExtensionContext>& context) const noexcept;

 private:
  Platform platform_;
  const WarpedFolders& warpedFolders_;
};

}  // namespace velmora
