// The platform of a Linux desktop, put together: the one place that names the implementations.
#pragma once

#include "platform/Platform.h"
#include "platform/linux/GLibMainQueue.h"
#include "platform/linux/LinuxExtensionBundle.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "platform/linux/LinuxPreferredLanguages.h"
#include "platform/linux/LinuxSharedDefaults.h"
#include "platform/linux/LinuxSharedLocations.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/SessionBus.h"
#include "platform/linux/SyslogLogger.h"
#include "platform/posix/PosixFileReader.h"
#include "platform/posix/PosixFileWriter.h"
#include "platform/posix/PosixPathStandardizer.h"
#include "platform/posix/RandomIdentifierSource.h"
#include "platform/posix/SystemClock.h"
#include "text/Text.h"

#include <optional>

namespace velmora {

class Environment;

/// Nothing here connects to anything, or looks at anything, before it is used.
struct LinuxPlatform {
  /// `environment` is kept by reference. `programName` stands in front of lines in the system log.
  LinuxPlatform(const char* programName, std::optional<Text> bundleIdentifier,
                const Environment& environment);

  Platform references();

  PosixFileReader fileReader;
  PosixFileWriter fileWriter;
  PosixPathStandardizer paths;
  RandomIdentifierSource identifiers;
  SystemClock clock;
  LinuxExtensionBundle bundle;
  LinuxSharedLocations locations;
  LinuxSharedDefaults defaults;
  LinuxPreferredLanguages languages;
  SessionBus sessionBus;
  LinuxNotificationCenter notifications;
  LinuxWorkspace workspace;
  GLibMainQueue mainQueue;
  SyslogLogger logger;
};

}  // namespace velmora
