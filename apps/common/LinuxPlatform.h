// Assembles the platform of a Linux desktop. No other file of the programs names an implementation.
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

/// The constructor makes no connection and reads no file. Each member does so at its first use.
struct LinuxPlatform {
  /// `environment` is kept by reference. Each line in the system log begins with `programName`,
  /// which is copied.
  LinuxPlatform(const char* programName, std::optional<Text> bundleIdentifier,
                const Environment& environment);

  Platform references() { return references(fileReader); }
  /// The same with another reader.
  Platform references(const FileReader& files);

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
