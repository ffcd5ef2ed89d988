// All interfaces that the core needs from a platform. Each program passes them to it.
#pragma once

namespace velmora {

class Clock;
class ExtensionBundle;
class FileReader;
class FileWriter;
class IdentifierSource;
class Logger;
class MainQueue;
class NotificationCenter;
class PathStandardizer;
class PreferredLanguages;
class SharedDefaults;
class SharedLocations;
class Workspace;

/// References, which cost nothing to copy. Their objects must outlive every request.
struct Platform {
  const ExtensionBundle& bundle;
  const FileReader& fileReader;
  FileWriter& fileWriter;
  const PathStandardizer& paths;
  const SharedLocations& locations;
  const SharedDefaults& defaults;
  const PreferredLanguages& languages;
  NotificationCenter& notifications;
  Workspace& workspace;
  MainQueue& mainQueue;
  Logger& logger;
  const Clock& clock;
  IdentifierSource& identifiers;
};

}  // namespace velmora
