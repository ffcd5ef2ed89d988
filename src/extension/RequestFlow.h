// Serves one request, from the host's input items to its completion or cancellation.
#pragma once

#include "text/FileURL.h"

#include <memory>
#include <string_view>
#include <vector>

namespace velmora {

class ExtensionContext;
struct Platform;

/// Serves the request of `context`: loads the selection, screens it, hands it to the application,
/// and starts the application. Returns when all loads are started. The rest runs on the main queue,
/// and shares ownership of `context` until then. A selection without a file URL is cancelled within
/// this call.
///
/// Without the memory to reach the main queue, the request is cancelled on the thread that finds
/// this out.
///
/// The request ends exactly once, after every provider has answered: completed, cancelled because
/// nothing in the selection suits (makeSelectionError), or cancelled because the handoff failed or
/// memory ran out (makeHandoffError, after one line in the system log). Never throws.
///
/// The objects that `platform` refers to must outlive the request.
void beginRequest(const std::shared_ptr<ExtensionContext>& context,
                  const Platform& platform) noexcept;

/// The last step of a request: does everything after the loading, and returns when it is done. Main
/// thread only.
void performHandoff(const std::vector<FileURL>& selection, ExtensionContext& context,
                    const Platform& platform) noexcept;

/// Writes one line with `description` to the system log, then cancels the request with the handoff
/// error.
void cancelFailedHandoff(std::string_view description, ExtensionContext& context,
                         const Platform& platform) noexcept;

/// Cancels the request with the code of the handoff error and without a message. The error's domain
/// is empty when there is no memory for it.
void cancelWithoutMessage(ExtensionContext& context) noexcept;

}  // namespace velmora
