#include "common/LinuxPlatform.h"
#include "localization/Messages.h"
#include "platform/linux/Environment.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

TEST(LinuxPlatforms, readTheGivenEnvironment) {
  const ScratchDirectory home;
  home.write("resources/ja.lproj/Localizable.strings", "\"key\" = \"訳\";\n");
  const Environment environment({{"HOME", home.path()},
                                 {"VELMORA_RESOURCE_DIR", home.path("resources")},
                                 {"VELMORA_GROUP_CONTAINER", "/container"},
                                 {"LANG", "ja_JP.UTF-8"}});
  LinuxPlatform linux("test", Text("an.identifier"), environment);
  const Platform platform = linux.references();
  EXPECT_EQ(platform.bundle.bundleIdentifier(), Text("an.identifier"));
  EXPECT_EQ(localizedMessage("key", "", VelmoraLanguage::japanese, platform.bundle), "訳");
  EXPECT_EQ(platform.locations.groupContainer("group"), Text("/container"));
  EXPECT_EQ(platform.paths.standardizedPath("~/a"), Text(home.path("a")));
  ASSERT_FALSE(platform.languages.preferredLanguages().empty());
  EXPECT_EQ(platform.languages.preferredLanguages().front(), Text("ja_JP"));
}

TEST(LinuxPlatforms, createNoFilesBeforeTheirUse) {
  const ScratchDirectory home;
  const Environment environment({{"HOME", home.path()}, {"XDG_RUNTIME_DIR", home.path()}});
  const LinuxPlatform linux("test", std::nullopt, environment);
  EXPECT_EQ(linux.bundle.bundleIdentifier(), std::nullopt);
  EXPECT_EQ(home.names(), std::vector<std::string>());
}

}  // namespace
}  // namespace velmora
