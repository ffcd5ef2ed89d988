#include "platform/linux/Environment.h"
#include "platform/linux/XdgDirectories.h"
#include "tests/support/RowName.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <optional>
#include <ostream>
#include <string>

namespace velmora {
namespace {

struct DirectoriesCase {
  std::string name;
  Environment::Variables variables;
  std::optional<std::string> passwordHome;
  std::optional<std::string> dataHome;
  std::optional<std::string> configHome;
};

std::ostream& operator<<(std::ostream& out, const DirectoriesCase& row) { return out << row.name; }

class XdgDirectories : public testing::TestWithParam<DirectoriesCase> {};

TEST_P(XdgDirectories, followTheRule) {
  const Environment environment(GetParam().variables);
  const auto lookup = [] { return GetParam().passwordHome; };
  EXPECT_EQ(xdgDataHome(environment, lookup), GetParam().dataHome);
  EXPECT_EQ(xdgConfigHome(environment, lookup), GetParam().configHome);
}

INSTANTIATE_TEST_SUITE_P(
    Table, XdgDirectories,
    testing::Values(
        DirectoriesCase{"variables",
                        {{"XDG_DATA_HOME", "/d"}, {"XDG_CONFIG_HOME", "/c"}, {"HOME", "/h"}},
                        "/p",
                        "/d",
                        "/c"},
        DirectoriesCase{
            "dataOnly", {{"XDG_DATA_HOME", "/d"}, {"HOME", "/h"}}, "/p", "/d", "/h/.config"},
        DirectoriesCase{"home", {{"HOME", "/h"}}, "/p", "/h/.local/share", "/h/.config"},
        DirectoriesCase{"emptyVariables",
                        {{"XDG_DATA_HOME", ""}, {"XDG_CONFIG_HOME", ""}, {"HOME", "/h"}},
                        "/p",
                        "/h/.local/share",
                        "/h/.config"},
        DirectoriesCase{"relativeVariables",
                        {{"XDG_DATA_HOME", "d"}, {"XDG_CONFIG_HOME", "./c"}, {"HOME", "/h"}},
                        "/p",
                        "/h/.local/share",
                        "/h/.config"},
        DirectoriesCase{"relativeHome", {{"HOME", "h"}}, "/p", "/p/.local/share", "/p/.config"},
        DirectoriesCase{"emptyHome", {{"HOME", ""}}, "/p", "/p/.local/share", "/p/.config"},
        DirectoriesCase{"passwordEntry", {}, "/p", "/p/.local/share", "/p/.config"},
        DirectoriesCase{"nothing", {}, std::nullopt, std::nullopt, std::nullopt},
        DirectoriesCase{"variablesWithoutAnyHome",
                        {{"XDG_DATA_HOME", "/d"}, {"XDG_CONFIG_HOME", "/c"}},
                        std::nullopt,
                        "/d",
                        "/c"}),
    RowName());

TEST(PasswordEntryHome, isTheUsers) {
  const passwd* entry = getpwuid(getuid());
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(passwordEntryHome(), entry->pw_dir);
}

}  // namespace
}  // namespace velmora
