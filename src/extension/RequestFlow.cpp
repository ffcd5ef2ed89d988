#include "extension/RequestFlow.h"

#include "extension/ActionKind.h"
#include "extension/SelectionGathering.h"
#include "extension/SelectionScreening.h"
#include "handoff/ApplicationLaunch.h"
#include "handoff/HandoffRequest.h"
#include "localization/Messages.h"
#include "platform/ExtensionContext.h"
#include "platform/Logger.h"
#include "platform/Platform.h"

#include <exception>
#include <new>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

namespace {

constexpr std::string_view failedHandoffLogPrefix = "Velmora Finder Action handoff failed: ";

/// The system's text for ENOMEM, as a constant: looking it up needs memory.
constexpr std::string_view outOfMemoryDescription = "Cannot allocate memory";

void logFailedHandoff(std::string_view description, Logger& logger) noexcept {
  try {
    logger.log(std::string(failedHandoffLogPrefix).append(description));
  } catch (const std::bad_alloc&) {
    logger.log(failedHandoffLogPrefix);
  }
}

/// Why a step of a request failed. The constant `ourWords` takes the place of `words` when there is
/// no memory for these, or no text.
struct Failure {
  std::string words = {};
  std::string_view ourWords = {};

  [[nodiscard]] std::string_view description() const { return ourWords.empty() ? words : ourWords; }
};

Failure failureDescribedBy(const char* words) noexcept {
  try {
    return {.words = words};
  } catch (const std::bad_alloc&) {
    return {.ourWords = outOfMemoryDescription};
  }
}

template <class Step>
std::optional<Failure> failureOf(Step step) noexcept {
  try {
    step();
    return std::nullopt;
  } catch (const std::bad_alloc&) {
    return Failure{.ourWords = outOfMemoryDescription};
  } catch (const std::exception& error) {
    return failureDescribedBy(error.what());
  } catch (...) {
    // The host's objects may throw something other than a std::exception.
    return Failure{.ourWords = "Unknown error"};
  }
}

/// Runs a step that ends the request as its last act. Cancels the request if the step throws.
template <class Step>
void endingWithHandoffError(ExtensionContext& context, const Platform& platform,
                            Step step) noexcept {
  // The request is cancelled outside of the exception handler: an exception of another language
  // that is raised inside of one would end the process.
  if (const std::optional<Failure> failure = failureOf(step)) {
    cancelFailedHandoff(failure->description(), context, platform);
  }
}

void cancelUnsuitableSelection(ExtensionContext& context, const Platform& platform) {
  context.cancelRequest(makeSelectionError(actionKind(platform.bundle), platform));
}

FinderHandoffAction handoffAction(const Platform& platform) {
  return isRestoreAction(platform.bundle) ? FinderHandoffAction::restoreMarkerFolder
                                          : FinderHandoffAction::warpFolder;
}

void screenAndHandOff(const std::vector<FileURL>& selection, ExtensionContext& context,
                      const Platform& platform) {
  const std::vector<Text> paths = acceptedPaths(screenSelection(selection, platform));
  if (paths.empty()) {
    cancelUnsuitableSelection(context, platform);
    return;
  }
  writeHandoffRequest(handoffAction(platform), paths, platform);
  openMainApplication(platform.workspace);
  context.completeRequest();
}

void loadAndPerformHandoff(const std::shared_ptr<ExtensionContext>& context,
                           const Platform& platform) {
  const std::vector<std::shared_ptr<ItemProvider>> providers = fileURLProviders(*context);
  if (providers.empty()) {
    cancelUnsuitableSelection(*context, platform);
    return;
  }
  loadFileURLs(providers, platform.mainQueue,
               [context, platform](const GatheredFileURLs& selection) {
                 if (!selection.has_value()) {
                   cancelFailedHandoff(outOfMemoryDescription, *context, platform);
                   return;
                 }
                 performHandoff(*selection, *context, platform);
               });
}

}  // namespace

void cancelWithoutMessage(ExtensionContext& context) noexcept {
  RequestError error;
  error.code = failedHandoffErrorCode;
  try {
    error.domain = finderActionErrorDomain;
  } catch (const std::bad_alloc&) {
    // The code alone identifies the error.
  }
  context.cancelRequest(error);
}

void cancelFailedHandoff(std::string_view description, ExtensionContext& context,
                         const Platform& platform) noexcept {
  logFailedHandoff(description, platform.logger);
  std::optional<RequestError> error;
  try {
    error = makeHandoffError(actionKind(platform.bundle), platform);
  } catch (...) {
    // The request must end, even without memory and if a platform's objects fail.
    error.reset();
  }
  if (error.has_value()) {
    context.cancelRequest(*error);
  } else {
    cancelWithoutMessage(context);
  }
}

void performHandoff(const std::vector<FileURL>& selection, ExtensionContext& context,
                    const Platform& platform) noexcept {
  endingWithHandoffError(context, platform,
                         [&] { screenAndHandOff(selection, context, platform); });
}

void beginRequest(const std::shared_ptr<ExtensionContext>& context,
                  const Platform& platform) noexcept {
  endingWithHandoffError(*context, platform, [&] { loadAndPerformHandoff(context, platform); });
}

}  // namespace velmora
