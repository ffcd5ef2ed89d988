#include "common/CommandArguments.h"
#include "velmora-warp-inspect/CommandLine.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace velmora::inspect {
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

TEST(InspectCommands, areReadWithTheirOptions) {
  using enum Command;
  const struct {
    Arguments arguments;
    CommandLine commandLine;
  } rows[] = {
      {{"check", "--json", "a"}, {.isJSON = true, .operands = {"a"}}},
      {{"check", "--kind", "manifest", "a"}, {.kind = FileKind::manifest, .operands = {"a"}}},
      {{"check", "--kind=index", "a"}, {.kind = FileKind::index, .operands = {"a"}}},
      {{"check", "a", "--kind", "marker"}, {.kind = FileKind::marker, .operands = {"a"}}},
      {{"check", "--files0-from=-"}, {.readsStandardInput = true}},
      {{"check", "--files0-from", "-"}, {.readsStandardInput = true}},
      {{"list"}, {.command = list}},
      {{"list", "--json"}, {.command = list, .isJSON = true}},
      {{"list", "--"}, {.command = list}},
      {{"explain", "--warp", "a"}, {.command = explain, .operands = {"a"}}},
      {{"explain", "a", "--restore", "--json"},
       {.command = explain, .isJSON = true, .isRestore = true, .operands = {"a"}}},
      {{"explain", "--warp", "--files0-from=-"}, {.command = explain, .readsStandardInput = true}},
      {{"doctor"}, {.command = doctor}},
      {{"doctor", "--json"}, {.command = doctor, .isJSON = true}},
  };
  for (const auto& row : rows) {
    expectReading(row.arguments, row.commandLine);
  }
}

TEST(InspectOperands, areTakenUnchanged) {
  const Arguments operands = {"/b",   "a",     "c d",   "[a,b]", "{}", "[]", "++",   "%%",   "+",
                              "list", "check", "\"a\"", "c=d",   "",   "-",  "\xff", "a\nb", " "};
  Arguments arguments = {"check"};
  arguments.insert(arguments.end(), operands.begin(), operands.end());
  expectReading(arguments, {.operands = operands});
  expectReading({"check", "/a"}, {.operands = {"/a"}});
  expectReading({"check", ""}, {.operands = {""}});
  expectReading({"check", "--", "-dash", "--json", "--", "--kind"},
                {.operands = {"-dash", "--json", "--", "--kind"}});
  expectReading({"check", "a", "--", "b"}, {.operands = {"a", "b"}});
}

TEST(WrongInspectCommandLines, raiseAMessageOfOneLine) {
  constexpr const char* noCommand = "no command given; see velmora-warp-inspect --help";
  constexpr const char* noFile = "no file given; see velmora-warp-inspect check --help";
  const struct {
    Arguments arguments;
    std::string message;
  } rows[] = {
      {{}, noCommand},
      {{"--", "check"}, noCommand},
      {{"chec", "a"}, "unknown command: chec; did you mean check?"},
      {{""}, "unknown command: "},
      {{"a\x1b\n"}, "unknown command: a\\u{1b}\\n"},
      {{"--json", "list"}, "unknown option: --json"},
      {{"check"}, noFile},
      {{"check", "--"}, noFile},
      {{"explain", "--warp"}, "no item given; see velmora-warp-inspect explain --help"},
      {{"list", "--kind", "index"}, "unknown option: --kind"},
      {{"list", "--version"}, "unknown option: --version"},
      {{"check", "--warp", "a"}, "unknown option: --warp"},
      {{"check", "--kind", "Index", "a"}, "--kind must be manifest, index or marker, not Index"},
      {{"check", "--kind=", "a"}, "--kind must be manifest, index or marker, not "},
      {{"list", "a"}, "list takes no operand: a"},
      {{"doctor", "--", "-a"}, "doctor takes no operand: -a"},
      {{"explain", "a"}, "explain needs either --warp or --restore"},
      {{"explain", "--warp", "--restore", "a"}, "explain needs either --warp or --restore"},
      {{"check", "--files0-from=x"}, "--files0-from reads standard input only: --files0-from=-"},
      {{"check", "--files0-from="}, "--files0-from reads standard input only: --files0-from=-"},
      {{"check", "--files0-from=-", "--", "a"}, "--files0-from=- and operands exclude each other"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(messageOf(row.arguments), row.message) << testing::PrintToString(row.arguments);
  }
}

TEST(RequestedInspectTexts, areHelpAndVersion) {
  const struct {
    Arguments arguments;
    Arguments pieces;
  } rows[] = {
      {{"--help"}, {"check", "list", "explain", "doctor", "--version"}},
      {{"-h"}, {"check", "list", "explain", "doctor", "--version"}},
      {{"check", "--help"},
       {"check [OPTIONS] [--] FILE...", "--kind", "--json", "--files0-from", "  64  "}},
      {{"list", "-h"}, {"list [OPTIONS]", "--json", "Exit status:"}},
      {{"explain", "a", "--help"}, {"(--warp|--restore)", "--files0-from", "Exit status:"}},
      {{"doctor", "--help"}, {"doctor [OPTIONS]", "--json", "Exit status:"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.arguments));
    const auto parsed = parseCommandLine(row.arguments);
    const auto* const requested = std::get_if<RequestedText>(&parsed);
    const std::string text = requested != nullptr ? requested->text : "no text";
    for (const std::string& piece : row.pieces) {
      EXPECT_NE(text.find(piece), std::string::npos) << piece;
    }
  }
  const std::string version = std::get<RequestedText>(parseCommandLine({"--version"})).text;
  EXPECT_TRUE(version.starts_with("velmora-warp-inspect ")) << version;
}

}  // namespace
}  // namespace velmora::inspect
