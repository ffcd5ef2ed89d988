#include "platform/linux/Environment.h"
#include "platform/linux/LinuxExtensionBundle.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/contracts/ExtensionBundleContract.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StringsFile.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {
namespace {

std::string tableFile(std::string_view language) {
  return std::string(language) + ".lproj/Localizable.strings";
}

class LinuxBundleAdapter {
 public:
  const ExtensionBundle& bundle() { return *bundle_; }

  void identifyAs(const std::optional<std::string>& identifier) {
    const std::optional<Text> text = identifier ? std::optional<Text>(*identifier) : std::nullopt;
    bundle_ = std::make_unique<LinuxExtensionBundle>(text, place(), files_);
  }

  void localize(std::string_view language, const std::map<std::string, std::string>& texts) {
    std::string table;
    for (const auto& [key, value] : texts) {
      table += stringsLiteral(key) + " = " + stringsLiteral(value) + ";\n";
    }
    directory_.write(tableFile(language), table);
  }

  void localizeUnusably(std::string_view language) {
    directory_.write(tableFile(language), "\"key\" = \"value\";\nstray");
  }

 private:
  std::function<std::string()> place() const {
    return [this] { return directory_.path(); };
  }

  ScratchDirectory directory_;
  PosixFileReader files_;
  std::unique_ptr<LinuxExtensionBundle> bundle_ =
      std::make_unique<LinuxExtensionBundle>(std::nullopt, place(), files_);
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, ExtensionBundleContract, LinuxBundleAdapter);

class LinuxExtensionBundleTest : public testing::Test {
 protected:
  ScratchDirectory directory;
  PosixFileReader files;
  LinuxExtensionBundle bundle{std::nullopt, [this] { return directory.path(); }, files};
};

TEST_F(LinuxExtensionBundleTest, acceptsAFolderWithoutATableButNoFile) {
  directory.write("es.lproj", "");
  EXPECT_EQ(bundle.localizationFolder("es"), nullptr);
  std::filesystem::create_directory(directory.path("ja.lproj"));
  const auto folder = bundle.localizationFolder("ja");
  ASSERT_NE(folder, nullptr);
  EXPECT_EQ(folder->localizedString("key", "fallback"), "fallback");
}

TEST_F(LinuxExtensionBundleTest, readsTheTableAtTheLookUp) {
  directory.write(tableFile("ja"), R"("key" = "first";)");
  const auto folder = bundle.localizationFolder("ja");
  directory.write(tableFile("ja"), R"("key" = "second";)");
  ASSERT_NE(folder, nullptr);
  EXPECT_EQ(folder->localizedString("key", "fallback"), "second");
}

TEST_F(LinuxExtensionBundleTest, usesTheFallbackForATableOverTheLimit) {
  constexpr std::size_t limit = 1024 * 1024;
  std::string table = R"("key" = "value"; //)";
  const auto textWithTableOf = [&](std::size_t length) {
    table.resize(length, 'x');
    directory.write(tableFile("ja"), table);
    return bundle.localizationFolder("ja")->localizedString("key", "fallback");
  };
  EXPECT_EQ(textWithTableOf(limit), "value");
  EXPECT_EQ(textWithTableOf(limit + 1), "fallback");
}

TEST_F(LinuxExtensionBundleTest, asksForTheResourceDirectoryAtTheLookUp) {
  int questions = 0;
  const auto place = [&questions] {
    ++questions;
    return std::string("/nowhere");
  };
  const LinuxExtensionBundle asking(std::nullopt, place, files);
  EXPECT_EQ(questions, 0);
  EXPECT_EQ(asking.localizationFolder("ja"), nullptr);
  EXPECT_EQ(questions, 1);
}

TEST(ResourceDirectory, isTheInstalledOneUnlessAnotherIsNamed) {
  const auto chosen = [](const Environment::Variables& variables) {
    return resourceDirectory(Environment(variables), "/installed");
  };
  EXPECT_EQ(chosen({}), "/installed");
  EXPECT_EQ(chosen({{"VELMORA_RESOURCE_DIR", "/built"}}), "/built");
  EXPECT_EQ(chosen({{"VELMORA_RESOURCE_DIR", "built"}}), "/installed");
  EXPECT_EQ(chosen({{"VELMORA_RESOURCE_DIR", ""}}), "/installed");
}

}  // namespace
}  // namespace velmora
