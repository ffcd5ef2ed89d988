#include "platform/linux/Environment.h"
#include "platform/linux/LinuxSharedDefaults.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/contracts/SharedDefaultsContract.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {
namespace {

using std::string_literals::operator""s;

std::string settingsFile(std::string_view suite) { return std::string(suite) + "/defaults.conf"; }

class LinuxDefaultsAdapter {
 public:
  const SharedDefaults& defaults() { return defaults_; }

  void store(std::string_view suite, std::string_view key, std::string_view value) {
    directory_.write(settingsFile(suite),
                     "[Defaults]\n" + std::string(key) + "=" + std::string(value) + "\n");
  }

  void makeUnusable(std::string_view suite) {
    std::filesystem::remove_all(directory_.path(suite));
    std::filesystem::create_directories(directory_.path(settingsFile(suite)));
  }

 private:
  ScratchDirectory directory_;
  PosixFileReader files_;
  Environment environment_{{{"XDG_CONFIG_HOME", directory_.path()}}};
  LinuxSharedDefaults defaults_{environment_, files_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, SharedDefaultsContract, LinuxDefaultsAdapter);

std::optional<std::string> settingIn(const ScratchDirectory& configHome) {
  const Environment environment({{"XDG_CONFIG_HOME", configHome.path()}});
  const PosixFileReader files;
  const std::optional<Text> value =
      LinuxSharedDefaults(environment, files).string("suite", "Language.v1");
  return value ? std::optional(value->utf8()) : std::nullopt;
}

/// Settings that a comment fills up to `length` bytes.
std::string settingsOfLength(std::size_t length) {
  std::string settings = "[Defaults]\nLanguage.v1=ja\n#";
  settings.resize(length, 'x');
  return settings;
}

TEST(LinuxSharedDefaultsTest, readsTheFormatOfSettings) {
  const struct {
    const char* name;
    std::string file;
    std::optional<std::string> value;
  } rows[] = {
      {"plain", "[Defaults]\nLanguage.v1=pt-BR\n", "pt-BR"},
      {"noFinalNewline", "[Defaults]\nLanguage.v1=pt-BR", "pt-BR"},
      {"blanksAroundTheSign", "[Defaults]\nLanguage.v1 = pt-BR\n", "pt-BR"},
      {"carriageReturns", "[Defaults]\r\nLanguage.v1=pt-BR\r\n", "pt-BR"},
      {"comment", "# c\n\n[Defaults]\n# c\nLanguage.v1=ja\n", "ja"},
      {"duplicates", "[Defaults]\nLanguage.v1=ja\nLanguage.v1=es\n", "es"},
      {"groupInTwoPieces", "[Defaults]\nLanguage.v1=ja\n[Other]\n[Defaults]\nLanguage.v1=es\n",
       "es"},
      {"quotesAreKept", "[Defaults]\nLanguage.v1=\"ja\"\n", "\"ja\""},
      {"emptyValue", "[Defaults]\nLanguage.v1=\n", ""},
      {"escapes", "[Defaults]\nLanguage.v1=a\\sb\\\\c\n", "a b\\c"},
      {"otherCaseOfKey", "[Defaults]\nlanguage.v1=ja\n", std::nullopt},
      {"otherGroup", "[Other]\nLanguage.v1=ja\n", std::nullopt},
      {"noGroup", "Language.v1=ja\n", std::nullopt},
      {"unknownEscape", "[Defaults]\nLanguage.v1=a\\qb\n", std::nullopt},
      {"valueNotUTF8", "[Defaults]\nLanguage.v1=a\xFF\n", std::nullopt},
      {"NULAfterTheValue", "[Defaults]\nLanguage.v1=ja\0\n"s, std::nullopt},
      {"NULInTheValue", "[Defaults]\nLanguage.v1=ja\0x\n"s, std::nullopt},
      {"NULAfterTheLastValue", "[Defaults]\nLanguage.v1=ja\0"s, std::nullopt},
      {"NULAfterAnotherLine", "[Defaults]\nLanguage.v1=ja\n# c\0\n"s, std::nullopt},
      {"byteOrderMark", "\xEF\xBB\xBF[Defaults]\nLanguage.v1=ja\n", std::nullopt},
      {"asLongAsTheLimit", settingsOfLength(256 * 1024), "ja"},
      {"longerThanTheLimit", settingsOfLength(256 * 1024 + 1), std::nullopt},
      {"strayLine", "[Defaults]\nLanguage.v1=ja\nstray\n", std::nullopt},
      {"empty", "", std::nullopt},
  };
  for (const auto& row : rows) {
    const ScratchDirectory configHome;
    configHome.write("suite/defaults.conf", row.file);
    EXPECT_EQ(settingIn(configHome), row.value) << row.name;
  }
}

TEST(LinuxSharedDefaultsTest, doesNotWaitForTheWriterOfAPipe) {
  const ScratchDirectory configHome;
  std::filesystem::create_directory(configHome.path("suite"));
  ASSERT_EQ(mkfifo(configHome.path("suite/defaults.conf").c_str(), 0600), 0);
  EXPECT_EQ(settingIn(configHome), std::nullopt);
}

TEST(LinuxSharedDefaultsTest, findsTheFileBelowTheHome) {
  const ScratchDirectory home;
  home.write(".config/suite/defaults.conf", "[Defaults]\nLanguage.v1=ja\n");
  const Environment environment({{"HOME", home.path()}, {"XDG_CONFIG_HOME", "relative"}});
  const PosixFileReader files;
  EXPECT_EQ(LinuxSharedDefaults(environment, files).string("suite", "Language.v1"), Text("ja"));
}

TEST(LinuxSharedDefaultsTest, holdsNothingForAUserWithoutAHome) {
  const Environment environment;
  const PosixFileReader files;
  const LinuxSharedDefaults defaults(environment, files, [] { return std::nullopt; });
  EXPECT_EQ(defaults.string("suite", "Language.v1"), std::nullopt);
}

}  // namespace
}  // namespace velmora
