#include "platform/macos/MacWorkspace.h"

#include "platform/macos/ExceptionBarrier.h"
#include "platform/macos/FoundationText.h"

#import <AppKit/AppKit.h>

#include <string>

namespace velmora {

namespace {

NSWorkspaceOpenConfiguration* foundationConfiguration(OpenConfiguration configuration) {
  NSWorkspaceOpenConfiguration* result = [NSWorkspaceOpenConfiguration configuration];
  [result setActivates:configuration.activates ? YES : NO];
  [result setAddsToRecentItems:configuration.addsToRecentItems ? YES : NO];
  return result;
}

}  // namespace

std::optional<Text> MacWorkspace::applicationLocation(std::string_view bundleIdentifier) noexcept {
  std::optional<Text> location;
  attempt([bundleIdentifier, &location] {
    @autoreleasepool {
      NSURL* url = [[NSWorkspace sharedWorkspace]
          URLForApplicationWithBundleIdentifier:foundationString(bundleIdentifier)];
      location = utf8Of([url absoluteString]);
    }
  });
  return location;
}

void MacWorkspace::openApplication(const Text& location, OpenConfiguration configuration) noexcept {
  attempt([&location, configuration] {
    @autoreleasepool {
      NSURL* url = [NSURL URLWithString:foundationString(location)];
      if (url == nil) {
        return;
      }
      [[NSWorkspace sharedWorkspace] openApplicationAtURL:url
                                            configuration:foundationConfiguration(configuration)
                                        completionHandler:nil];
    }
  });
}

}  // namespace velmora
