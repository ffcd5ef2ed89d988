// The extension host as a test plays it: a process of one of the two actions, a home with the
// shared files, and requests for the principal class. For Objective-C++ only.
#pragma once

#include "tests/gnustep/RecordingExtensionContext.h"
#include "tests/gnustep/ScriptedItemProvider.h"
#include "tests/platform/macos/ScratchBundle.h"
#include "tests/support/ScratchDirectory.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// A request that the host has begun, as far as it can see it.
using BegunRequest = std::shared_ptr<const ContextRecord>;

/// One at a time. The program has its part in the application group, and the application is
/// installed.
class HostSession {
 public:
  HostSession();

  /// The bundle whose program runs. Without an identifier at the beginning.
  ScratchBundle bundle;

  /// Makes a directory in the home; returns its path.
  std::string makeFolder(std::string_view name);

  /// Warps a folder as the application records it.
  void recordWarp(const std::string& folder, std::string_view warpID);

  /// The JSON texts of the request files, in no order.
  [[nodiscard]] std::vector<std::string> requests() const;

  /// Begins a request with an object of the principal class that the host lets go of at once.
  BegunRequest begin(NSArray* inputItems);

  /// The same for one input item with these attachments.
  BegunRequest beginWithAttachments(NSArray* attachments);

  /// A file in the place of the directory for requests: no handoff can succeed.
  void obstructHandoff();

  ScratchDirectory home;
};

/// An attachment that offers a file URL and delivers `item` within the call, with `error`.
NSItemProvider* providerOf(id item, NSError* error = nil);
NSItemProvider* providerOfPath(const std::string& path);

}  // namespace velmora
