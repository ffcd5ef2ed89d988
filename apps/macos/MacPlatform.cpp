#include "macos/MacPlatform.h"

namespace velmora {

Platform MacPlatform::references() {
  return {.bundle = bundle,
          .fileReader = fileReader,
          .fileWriter = fileWriter,
          .paths = paths,
          .locations = locations,
          .defaults = defaults,
          .languages = languages,
          .notifications = notifications,
          .workspace = workspace,
          .mainQueue = mainQueue,
          .logger = logger,
          .clock = clock,
          .identifiers = identifiers};
}

}  // namespace velmora
