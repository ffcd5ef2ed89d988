// The road of one request, from the host's input items to its one end.
#pragma once

#include "text/FileURL.h"

#include <memory>
#include <string_view>
#include <vector>

namespace velmora {

class ExtensionContext;
struct Platform;

/// Serves the request of `context`: loads the selection, screens it, hands it to the application
/// and opens that. Returns once all loads are started; the rest follows on the main queue and
/// holds `context` until then. A selection that offers no file URL is cancelled within this call.
///
/// (Without the memory to reach the main queue, the request is cancelled where that shows.)
///
/// The request ends exactly once: completed, cancelled because nothing in the selection suits
/// (makeSelectionError), or cancelled because the handoff failed or memory ran out
/// (makeHandoffError, after one line in the system log). Nothing is ever thrown.
///
/// What `platform` refers to outlives the request.
void beginRequest(const std::shared_ptr<ExtensionContext>& context,
                  const Platform& platform) noexcept;

/// The last step of a request: everything after the loading, synchronously. Main thread only.
void performHandoff(const std::vector<FileURL>& selection, ExtensionContext& context,
                    const Platform& platform) noexcept;

/// Ends a request that cannot be served with the handoff error, after one line with `description`
/// in the system log.
void cancelFailedHandoff(std::string_view description, ExtensionContext& context,
                         const Platform& platform) noexcept;

/// Ends a request that cannot be served at all with the handoff error, but without a sentence.
void cancelWithoutMessage(ExtensionContext& context) noexcept;

}  // namespace velmora
