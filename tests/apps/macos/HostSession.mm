#include "tests/apps/macos/HostSession.h"

#include "tests/fakes/WarpRecords.h"
#include "tests/gnustep/SharedObjects.h"
#include "tests/gnustep/Strings.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace velmora {

namespace {

constexpr const char* requestDirectory = "Group/Warp/FinderHandoff";

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

HostSession::HostSession() {
  sharedObjects().groupContainers = {{"group.io.tolvane.Velmora", home.path("Group")}};
  sharedObjects().applications = {{"io.tolvane.Velmora", "/Applications/Velmora.app"}};
}

std::string HostSession::makeFolder(std::string_view name) {
  std::filesystem::create_directories(home.path(name));
  return home.path(name);
}

void HostSession::recordWarp(const std::string& folder, std::string_view warpID) {
  const std::string name = std::string(warpID) + ".json";
  home.write("Group/Warp/ManifestMirror/" + name, encodeManifest(manifestOf(folder, warpID)));
  std::ofstream(folder + "/.velmora-warped.json") << markerJSON(warpID);
}

std::vector<std::string> HostSession::requests() const {
  std::vector<std::string> texts;
  const std::filesystem::path directory = home.path(requestDirectory);
  if (std::filesystem::is_directory(directory)) {
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
      texts.push_back(contentOf(entry.path()));
    }
  }
  return texts;
}

BegunRequest HostSession::begin(NSArray* inputItems) {
  @autoreleasepool {
    RecordingExtensionContext* context =
        [[[RecordingExtensionContext alloc] initWithInputItems:inputItems] autorelease];
    NSViewController* extension =
        [[NSClassFromString(@"VelmoraFinderActionExtension") alloc] initWithNibName:nil bundle:nil];
    [extension beginRequestWithExtensionContext:context];
    [extension release];
    return [context record];
  }
}

BegunRequest HostSession::beginWithAttachments(NSArray* attachments) {
  @autoreleasepool {
    NSExtensionItem* item = [[[NSExtensionItem alloc] init] autorelease];
    [item setAttachments:attachments];
    return begin(@[ item ]);
  }
}

void HostSession::obstructHandoff() { home.write(requestDirectory, "in the way"); }

NSItemProvider* providerOf(id item, NSError* error) {
  return [[[ScriptedItemProvider alloc]
      initWithTypes:{"public.file-url"}
             script:[item, error](NSItemProviderCompletionHandler handler) {
               handler(item, error);
             }] autorelease];
}

NSItemProvider* providerOfPath(const std::string& path) {
  return providerOf([NSURL fileURLWithPath:nsString(path)]);
}

}  // namespace velmora
