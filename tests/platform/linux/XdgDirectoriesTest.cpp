#include "platform/linux/Environment.h"
#include "platform/linux/XdgDirectories.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <optional>
#include <string>
#include <vector>

namespace velmora {
namespace {

TEST(XdgDirectories, areTheVariablesOrTheirDefaults) {
  const struct {
    const char* name;
    Environment::Variables variables;
    std::optional<std::string> passwordHome;
    std::optional<std::string> dataHome;
    std::optional<std::string> configHome;
  } rows[] = {
      {"variables",
       {{"XDG_DATA_HOME", "/d"}, {"XDG_CONFIG_HOME", "/c"}, {"HOME", "/h"}},
       "/p",
       "/d",
       "/c"},
      {"dataOnly", {{"XDG_DATA_HOME", "/d"}, {"HOME", "/h"}}, "/p", "/d", "/h/.config"},
      {"home", {{"HOME", "/h"}}, "/p", "/h/.local/share", "/h/.config"},
      {"emptyVariables",
       {{"XDG_DATA_HOME", ""}, {"XDG_CONFIG_HOME", ""}, {"HOME", "/h"}},
       "/p",
       "/h/.local/share",
       "/h/.config"},
      {"relativeVariables",
       {{"XDG_DATA_HOME", "d"}, {"XDG_CONFIG_HOME", "./c"}, {"HOME", "/h"}},
       "/p",
       "/h/.local/share",
       "/h/.config"},
      {"relativeHome", {{"HOME", "h"}}, "/p", "/p/.local/share", "/p/.config"},
      {"emptyHome", {{"HOME", ""}}, "/p", "/p/.local/share", "/p/.config"},
      {"passwordEntry", {}, "/p", "/p/.local/share", "/p/.config"},
      {"nothing", {}, std::nullopt, std::nullopt, std::nullopt},
      {"variablesWithoutAnyHome",
       {{"XDG_DATA_HOME", "/d"}, {"XDG_CONFIG_HOME", "/c"}},
       std::nullopt,
       "/d",
       "/c"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Environment environment(row.variables);
    const auto lookup = [&row] { return row.passwordHome; };
    EXPECT_EQ(xdgDataHome(environment, lookup), row.dataHome);
    EXPECT_EQ(xdgConfigHome(environment, lookup), row.configHome);
  }
}

TEST(XdgDirectories, ofDataAreTheUsersAndTheAbsoluteSharedOnes) {
  using Directories = std::vector<std::string>;
  const std::optional<std::string> home = "/p";
  const struct {
    Environment::Variables variables;
    std::optional<std::string> passwordHome;
    Directories directories;
  } rows[] = {
      {{}, home, {"/p/.local/share", "/usr/local/share", "/usr/share"}},
      {{{"XDG_DATA_DIRS", ""}}, home, {"/p/.local/share", "/usr/local/share", "/usr/share"}},
      {{{"XDG_DATA_HOME", "/d"}, {"XDG_DATA_DIRS", "/a:/b/"}}, home, {"/d", "/a", "/b/"}},
      {{{"XDG_DATA_HOME", "."}, {"HOME", "."}, {"XDG_DATA_DIRS", "/a"}},
       home,
       {"/p/.local/share", "/a"}},
      {{{"XDG_DATA_HOME", "/d"}, {"XDG_DATA_DIRS", ":/a::b:./b:/c:"}}, home, {"/d", "/a", "/c"}},
      {{{"XDG_DATA_HOME", "/d"}, {"XDG_DATA_DIRS", "share"}}, home, {"/d"}},
      {{{"XDG_DATA_HOME", "/d"}, {"XDG_DATA_DIRS", ":"}}, home, {"/d"}},
      {{{"XDG_DATA_DIRS", "/a"}}, std::nullopt, {"/a"}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(xdgDataDirectories(Environment(row.variables), [&row] { return row.passwordHome; }),
              row.directories);
  }
}

TEST(PasswordEntryHome, isTheHomeOfTheUser) {
  const passwd* entry = getpwuid(getuid());
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(passwordEntryHome(), entry->pw_dir);
}

}  // namespace
}  // namespace velmora
