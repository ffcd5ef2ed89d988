#include "localization/Messages.h"

#include "platform/ExtensionBundle.h"
#include "platform/Platform.h"
#include "platform/PreferredLanguages.h"
#include "platform/SharedDefaults.h"

#include <memory>

namespace velmora {

namespace {

struct Message {
  std::string_view key;
  std::string_view englishText;
};

constexpr Message chooseWarpFolders = {
    .key = "consumer.finder-service.error.choose-warp-folders",
    .englishText = "Select one or more normal folders to Warp to Velmora.",
};
constexpr Message chooseWarpedItem = {
    .key = "consumer.finder-service.error.choose-warped-item",
    .englishText = "Select a warped Velmora item to restore.",
};
constexpr Message warpHandoffFailed = {
    .key = "consumer.finder-service.error.warp-handoff-failed",
    .englishText = "Velmora could not start this Warp action. Open Velmora and try again.",
};
constexpr Message restoreHandoffFailed = {
    .key = "consumer.finder-service.error.restore-handoff-failed",
    .englishText = "Velmora could not start this Restore action. Open Velmora and try again.",
};

RequestError makeError(int code, const Message& message, const Platform& platform) {
  const VelmoraLanguage language = resolvedLanguage(selectedLanguage(platform.defaults),
                                                    platform.languages.preferredLanguages());
  return {
      .domain = std::string(finderActionErrorDomain),
      .code = code,
      .localizedDescription =
          localizedMessage(message.key, message.englishText, language, platform.bundle),
  };
}

}  // namespace

std::string localizedMessage(std::string_view key, std::string_view englishText,
                             VelmoraLanguage language, const ExtensionBundle& bundle) {
  const std::unique_ptr<LocalizationFolder> folder = bundle.localizationFolder(rawValue(language));
  return folder != nullptr ? folder->localizedString(key, englishText) : std::string(englishText);
}

RequestError makeSelectionError(ActionKind action, const Platform& platform) {
  return makeError(unsuitableSelectionErrorCode,
                   action == ActionKind::restore ? chooseWarpedItem : chooseWarpFolders, platform);
}

RequestError makeHandoffError(ActionKind action, const Platform& platform) {
  return makeError(failedHandoffErrorCode,
                   action == ActionKind::restore ? restoreHandoffFailed : warpHandoffFailed,
                   platform);
}

}  // namespace velmora
