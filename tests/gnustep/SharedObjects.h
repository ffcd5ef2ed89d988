// The state of the objects that a whole process shares: the file manager, the workspace, the main
// queue, the log. Their replacements in tests answer from it. Tests fill it and read it.
//
// One per process, because categories cannot keep state elsewhere. The main function of these tests
// resets it before each test.
#pragma once

#include <cstddef>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace velmora {

/// A call of openApplicationAtURL:configuration:completionHandler:.
struct OpenedApplication {
  /// The absolute string of the URL.
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

/// Paths are absolute. No lock guards this, so set it before other threads read it.
struct SharedObjects {
  /// The containers of the application groups that this program is in, by group identifier.
  std::map<std::string, std::string> groupContainers;
  /// URLsForDirectory:inDomains: returns these for the user's Application Support directory, and
  /// nothing for other directories and domains.
  std::vector<std::string> applicationSupportDirectories;
  /// The paths of the installed applications, by bundle identifier.
  std::map<std::string, std::string> applications;

  /// The recorded calls to open an application, in order.
  std::vector<OpenedApplication> openedApplications;
  /// The recorded number of calls of a view controller's own beginRequestWithExtensionContext:.
  int begunRequests = 0;
};

SharedObjects& sharedObjects();

/// Runs all tasks of the main queue on the calling thread, also those that tasks add. Returns their
/// number.
std::size_t runMainQueue();

/// The lines of NSLog, without time stamp, process and the newline at the end. GNUstep's own
/// warnings are among them. Any thread may log meanwhile.
std::vector<std::string> loggedLines();

/// Resets everything above to its state at the start of the process. Drops pending tasks of the
/// main queue, and does not free their contexts.
void resetSharedObjects();

/// Adds a line to loggedLines(). May be called on any thread.
void recordLoggedLine(std::string line);

}  // namespace velmora
