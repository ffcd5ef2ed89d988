#include "platform/linux/ExecLine.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace velmora {
namespace {

TEST(ExecLine, isSplitIntoArgumentsWithoutFieldCodes) {
  using Command = std::optional<std::vector<std::string>>;
  const FieldCodes codes = {.icon = "an icon", .name = "A \"Name\"", .path = "/a path"};
  const struct {
    const char* line;
    Command command;
  } rows[] = {
      {"program", {{"program"}}},
      {"/opt/program  one two", {{"/opt/program", "one", "two"}}},
      {R"("/opt/a program" "" 'b c' d\ e "\"\$\`\\")",
       {{"/opt/a program", "", "b c", "d e", "\"$`\\"}}},
      {"program $HOME `id`; rm *", {{"program", "$HOME", "`id`;", "rm", "*"}}},
      {"program %f %F %u %U", {{"program"}}},
      {"program %d %D %n %N %v %m %x", {{"program"}}},
      {"program --open=%u -", {{"program", "--open=", "-"}}},
      {"program 100%% %%u %", {{"program", "100%", "%u", "%"}}},
      {"program %i", {{"program", "--icon", "an icon"}}},
      {"program %c in %k", {{"program", "A \"Name\"", "in", "/a path"}}},
      {"program a\"b", std::nullopt},
      {"program 'a", std::nullopt},
      {"program a\\", std::nullopt},
      {"", std::nullopt},
      {"  ", std::nullopt},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(parseExecLine(row.line, codes), row.command) << row.line;
  }
  EXPECT_EQ(parseExecLine("program %i %c", {}), Command({"program"}));
}

}  // namespace
}  // namespace velmora
