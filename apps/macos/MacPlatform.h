// Assembles the platform of macOS, and names its implementations.
#pragma once

#include "platform/Platform.h"
#include "platform/macos/MacExtensionBundle.h"
#include "platform/macos/MacLogger.h"
#include "platform/macos/MacMainQueue.h"
#include "platform/macos/MacNotificationCenter.h"
#include "platform/macos/MacPathStandardizer.h"
#include "platform/macos/MacPreferredLanguages.h"
#include "platform/macos/MacSharedDefaults.h"
#include "platform/macos/MacSharedLocations.h"
#include "platform/macos/MacWorkspace.h"
#include "platform/posix/PosixFileReader.h"
#include "platform/posix/PosixFileWriter.h"
#include "platform/posix/RandomIdentifierSource.h"
#include "platform/posix/SystemClock.h"

namespace velmora {

/// Has no state, because none of its members has state. Each request has its own instance.
struct MacPlatform {
  Platform references();

  PosixFileReader fileReader;
  PosixFileWriter fileWriter;
  RandomIdentifierSource identifiers;
  SystemClock clock;
  MacPathStandardizer paths;
  MacExtensionBundle bundle;
  MacSharedLocations locations;
  MacSharedDefaults defaults;
  MacPreferredLanguages languages;
  MacNotificationCenter notifications;
  MacWorkspace workspace;
  MacMainQueue mainQueue;
  MacLogger logger;
};

}  // namespace velmora
