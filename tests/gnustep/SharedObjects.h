// What the objects that a whole process shares answer in tests, where GNUstep has no answer of its
// own: the file manager, the workspace, the main queue, the log. Tests fill it and read from it.
//
// It is one for the process, because the categories that answer have no other place to keep
// anything. The main program of these tests forgets everything before each of them.
#pragma once

#include <cstddef>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace velmora {

/// A call of openApplicationAtURL:configuration:completionHandler:.
struct OpenedApplication {
  /// The absolute text of the URL.
  std::string url;
  bool activates = false;
  bool addsToRecentItems = false;
  bool hasCompletionHandler = false;

  bool operator==(const OpenedApplication&) const = default;
  friend std::ostream& operator<<(std::ostream& stream, const OpenedApplication& opened) {
    return stream << opened.url << (opened.activates ? ", activates" : "")
                  << (opened.addsToRecentItems ? ", adds to recent items" : "")
                  << (opened.hasCompletionHandler ? ", has a completion handler" : "");
  }
};

/// Paths are absolute. Nothing here is guarded: set it before threads ask.
struct SharedObjects {
  /// The containers of the application groups that this program is in, by group identifier.
  std::map<std::string, std::string> groupContainers;
  /// What URLsForDirectory:inDomains: returns for Application Support of the user; any other
  /// directory or domain has none.
  std::vector<std::string> applicationSupportDirectories;
  /// The paths of the installed applications, by bundle identifier.
  std::map<std::string, std::string> applications;

  /// Recorded: what was opened, in order.
  std::vector<OpenedApplication> openedApplications;
  /// Recorded: how often a view controller's own beginRequestWithExtensionContext: was called.
  int begunRequests = 0;
};

SharedObjects& sharedObjects();

/// Runs the tasks of the main queue on the calling thread, those included that they add, until
/// there are none. Returns how many there were.
std::size_t runMainQueue();

/// The lines that went to NSLog, without time stamp, process and the newline at the end. GNUstep
/// complains there, too. Any thread may log meanwhile.
std::vector<std::string> loggedLines();

/// Sets everything above back to what it was at the start of the process. Tasks of the main queue
/// that have not run are dropped: nobody frees their context.
void resetSharedObjects();

/// Adds a line to loggedLines(). May be called on any thread.
void recordLoggedLine(std::string line);

}  // namespace velmora
