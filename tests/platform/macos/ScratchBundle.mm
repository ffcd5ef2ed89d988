#include "tests/platform/macos/ScratchBundle.h"

#include "platform/macos/FoundationText.h"
#include "tests/platform/macos/MethodReplacement.h"
#include "tests/support/StringsFile.h"

#import <Foundation/Foundation.h>

namespace velmora {

namespace {

/// The answer of the replaced method. A global, because the method gets no other state.
NSBundle* standIn = nil;

id mainBundle(id, SEL) { return standIn; }

}  // namespace

struct ScratchBundle::MainBundle {
  ~MainBundle() { replace(nil); }

  void replace(NSBundle* bundle) {
    [standIn release];
    standIn = bundle;
  }

  MethodReplacement replacement {
    class_getClassMethod([NSBundle class], @selector(mainBundle)), mainBundle
  };
};

ScratchBundle::ScratchBundle() : mainBundle_(std::make_unique<MainBundle>()) {
  writeNextGeneration();
}

ScratchBundle::~ScratchBundle() = default;

void ScratchBundle::identifyAs(const std::optional<std::string>& identifier) {
  identifier_ = identifier;
  writeNextGeneration();
}

void ScratchBundle::writeStrings(std::string_view language, std::string_view content) {
  tables_.insert_or_assign(std::string(language), std::string(content));
  writeNextGeneration();
}

void ScratchBundle::localize(std::string_view language,
                             const std::map<std::string, std::string>& texts) {
  std::string content;
  for (const auto& [key, text] : texts) {
    content += stringsLiteral(key) + " = " + stringsLiteral(text) + ";\n";
  }
  writeStrings(language, content);
}

void ScratchBundle::writeNextGeneration() {
  const std::string bundle = std::to_string(++generation_) + ".bundle";
  const std::string resources = bundle + "/Resources/";
  directory_.write(
      resources + "Info-gnustep.plist",
      identifier_ ? "{ CFBundleIdentifier = " + stringsLiteral(*identifier_) + "; }" : "{ }");
  for (const auto& [language, content] : tables_) {
    directory_.write(resources + language + ".lproj/Localizable.strings", content);
  }
  @autoreleasepool {
    mainBundle_->replace([[NSBundle alloc] initWithPath:foundationString(directory_.path(bundle))]);
  }
}

}  // namespace velmora
