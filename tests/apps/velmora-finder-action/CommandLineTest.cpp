#include "common/CommandArguments.h"
#include "velmora-finder-action/CommandLine.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace velmora {
namespace {

using Arguments = std::vector<std::string>;

void expectReading(const Arguments& arguments, const CommandLine& expected) {
  SCOPED_TRACE(testing::PrintToString(arguments));
  try {
    const auto parsed = parseCommandLine(arguments);
    ASSERT_TRUE(std::holds_alternative<CommandLine>(parsed));
    EXPECT_TRUE(std::get<CommandLine>(parsed) == expected);
  } catch (const UsageError& error) {
    ADD_FAILURE() << error.what();
  }
}

std::string messageOf(const Arguments& arguments) {
  try {
    static_cast<void>(parseCommandLine(arguments));
    return "no error";
  } catch (const UsageError& error) {
    return error.what();
  }
}

TEST(ActionOptions, areReadAtAnyPosition) {
  constexpr const char* restore = "io.tolvane.Velmora.FinderRestoreAction";
  const struct {
    Arguments arguments;
    CommandLine commandLine;
  } rows[] = {
      {{"--restore", "a"}, {.bundleIdentifier = restore, .operands = {"a"}}},
      {{"--bundle-identifier", "x.y", "a"}, {.bundleIdentifier = "x.y", .operands = {"a"}}},
      {{"--bundle-identifier=x", "a"}, {.bundleIdentifier = "x", .operands = {"a"}}},
      {{"--bundle-identifier=", "a"}, {.bundleIdentifier = "", .operands = {"a"}}},
      {{"--bundle-identifier", "", "a"}, {.bundleIdentifier = "", .operands = {"a"}}},
      {{"--check", "a"}, {.isCheck = true, .operands = {"a"}}},
      {{"--no-notify", "a"}, {.notifiesDesktop = false, .operands = {"a"}}},
      {{"--files0-from=-"}, {.readsStandardInput = true}},
      {{"--files0-from", "-"}, {.readsStandardInput = true}},
      {{"a", "--check", "b"}, {.isCheck = true, .operands = {"a", "b"}}},
  };
  for (const auto& row : rows) {
    expectReading(row.arguments, row.commandLine);
  }
}

TEST(ActionOperands, areTakenUnchanged) {
  const Arguments operands = {"/b",  "/a",  "c d", "[a,b]", "{}",   "[]",   "\"a\"",
                              "'b'", "c=d", "",    "-",     "\xff", "a\nb", " "};
  expectReading(operands, {.operands = operands});
  expectReading({"/a"}, {.operands = {"/a"}});
  expectReading({""}, {.operands = {""}});
  expectReading({"--", "-dash", "--restore", "--"}, {.operands = {"-dash", "--restore", "--"}});
  expectReading({"a", "--", "b"}, {.operands = {"a", "b"}});
}

TEST(WrongActionCommandLines, raiseAMessageOfOneLine) {
  constexpr const char* noItem = "no item given; see velmora-finder-action --help";
  const struct {
    Arguments arguments;
    std::string message;
  } rows[] = {
      {{}, noItem},
      {{"--"}, noItem},
      {{"--check"}, noItem},
      {{"--un\nknown", "a"}, "unknown option: --un\\nknown"},
      {{"--resotre", "a"}, "unknown option: --resotre; did you mean --restore?"},
      {{"--restore", "--bundle-identifier", "x", "a"},
       "--restore and --bundle-identifier exclude each other"},
      {{"--restore", "--bundle-identifier=", "a"},
       "--restore and --bundle-identifier exclude each other"},
      {{"--bundle-identifier", "--restore", "a"}, "--bundle-identifier without a value"},
      {{"--files0-from=x"}, "--files0-from reads standard input only: --files0-from=-"},
      {{"--files0-from=-", "a"}, "--files0-from=- and operands exclude each other"},
      {{"--files0-from=-", "--", "a"}, "--files0-from=- and operands exclude each other"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(messageOf(row.arguments), row.message) << testing::PrintToString(row.arguments);
  }
}

TEST(RequestedActionTexts, areHelpAndVersion) {
  const std::string help = std::get<RequestedText>(parseCommandLine({"-h"})).text;
  EXPECT_EQ(std::get<RequestedText>(parseCommandLine({"--help"})).text, help);
  for (const char* option : {"--bundle-identifier", "--restore", "--check", "--no-notify",
                             "--files0-from", "--help", "--version", "Exit status:"}) {
    EXPECT_NE(help.find(option), std::string::npos) << option;
  }
  const std::string version = std::get<RequestedText>(parseCommandLine({"--version"})).text;
  EXPECT_TRUE(version.starts_with("velmora-finder-action ")) << version;
}

}  // namespace
}  // namespace velmora
