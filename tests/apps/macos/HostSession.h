// Plays the extension host: a process of one of the two actions, a home with the shared files, and
// requests for the principal class. For Objective-C++ only.
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

/// The record of a request that the host has begun.
using BegunRequest = std::shared_ptr<const ContextRecord>;

/// Only one may exist at a time. The program is in the application group, and the application is
/// installed.
class HostSession {
 public:
  HostSession();

  /// The bundle of the running program. It has no identifier at first.
  ScratchBundle bundle;

  /// Creates a directory in the home; returns its path.
  std::string makeFolder(std::string_view name);

  /// Records a Warp of a folder as the application does.
  void recordWarp(const std::string& folder, std::string_view warpID);

  /// The JSON texts of the request files, in any order.
  [[nodiscard]] std::vector<std::string> requests() const;

  /// Begins a request with a new object of the principal class, which the host releases at once.
  BegunRequest begin(NSArray* inputItems);

  /// Begins a request for one input item with these attachments.
  BegunRequest beginWithAttachments(NSArray* attachments);

  /// Puts a file in place of the directory for requests, so that no handoff can succeed.
  void obstructHandoff();

  ScratchDirectory home;
};

/// An attachment that offers a file URL and delivers `item` within the call, with `error`.
NSItemProvider* providerOf(id item, NSError* error = nil);
NSItemProvider* providerOfPath(const std::string& path);

}  // namespace velmora
