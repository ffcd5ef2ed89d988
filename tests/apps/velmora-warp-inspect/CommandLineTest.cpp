#include "CommandLine.h"
#include "tests/support/RowName.h"

#include <gtest/gtest.h>

namespace velmora::inspect {
namespace {

using Arguments = std::vector<std::string>;

struct AcceptedCase {
  const char* name;
  Arguments arguments;
  CommandLine commandLine;
};

class AcceptedCommandLine : public testing::TestWithParam<AcceptedCase> {};

TEST_P(AcceptedCommandLine, isReadExactly) {
  const auto parsed = parseCommandLine(GetParam().arguments);
  ASSERT_TRUE(std::holds_alternative<CommandLine>(parsed)) << std::get<UsageError>(parsed).message;
  EXPECT_EQ(std::get<CommandLine>(parsed), GetParam().commandLine);
}

CommandLine checkOf(Arguments files) { return {.operands = std::move(files)}; }

INSTANTIATE_TEST_SUITE_P(
    CommandLines, AcceptedCommandLine,
    testing::Values(
        AcceptedCase{"check", {"check", "/a"}, checkOf({"/a"})},
        AcceptedCase{"operandsInOrder", {"check", "b", "a", "c d"}, checkOf({"b", "a", "c d"})},
        AcceptedCase{"json", {"check", "--json", "a"}, {.isJSON = true, .operands = {"a"}}},
        AcceptedCase{"kindManifest",
                     {"check", "--kind", "manifest", "a"},
                     {.kind = FileKind::manifest, .operands = {"a"}}},
        AcceptedCase{"kindJoined",
                     {"check", "--kind=index", "a"},
                     {.kind = FileKind::index, .operands = {"a"}}},
        AcceptedCase{"kindBehindOperands",
                     {"check", "a", "--kind", "marker"},
                     {.kind = FileKind::marker, .operands = {"a"}}},
        AcceptedCase{"standardInput", {"check", "--files0-from=-"}, {.readsStandardInput = true}},
        AcceptedCase{
            "standardInputApart", {"check", "--files0-from", "-"}, {.readsStandardInput = true}},
        AcceptedCase{"separator",
                     {"check", "--", "-dash", "--json", "--", "--kind"},
                     checkOf({"-dash", "--json", "--", "--kind"})},
        AcceptedCase{"operandsAroundTheSeparator", {"check", "a", "--", "b"}, checkOf({"a", "b"})},
        AcceptedCase{"brackets", {"check", "[a,b]", "{}", "[]"}, checkOf({"[a,b]", "{}", "[]"})},
        AcceptedCase{"parserMarks", {"check", "++", "%%", "+"}, checkOf({"++", "%%", "+"})},
        AcceptedCase{"namesOfCommands", {"check", "list", "check"}, checkOf({"list", "check"})},
        AcceptedCase{"quotesAndEquals", {"check", "\"a\"", "c=d"}, checkOf({"\"a\"", "c=d"})},
        AcceptedCase{"emptyOperand", {"check", ""}, checkOf({""})},
        AcceptedCase{"singleDash", {"check", "-"}, checkOf({"-"})},
        AcceptedCase{"notUTF8", {"check", "\xff"}, checkOf({"\xff"})},
        AcceptedCase{"newlineAndBlank", {"check", "a\nb", " "}, checkOf({"a\nb", " "})},
        AcceptedCase{"list", {"list"}, {.command = Command::list}},
        AcceptedCase{"listJSON", {"list", "--json"}, {.command = Command::list, .isJSON = true}},
        AcceptedCase{"listSeparator", {"list", "--"}, {.command = Command::list}},
        AcceptedCase{"explainWarp",
                     {"explain", "--warp", "a"},
                     {.command = Command::explain, .operands = {"a"}}},
        AcceptedCase{
            "explainRestore",
            {"explain", "a", "--restore", "--json"},
            {.command = Command::explain, .isJSON = true, .isRestore = true, .operands = {"a"}}},
        AcceptedCase{"explainStandardInput",
                     {"explain", "--warp", "--files0-from=-"},
                     {.command = Command::explain, .readsStandardInput = true}},
        AcceptedCase{"listWorkers",
                     {"list", "--workers", "2"},
                     {.command = Command::list, .workerCount = 2}},
        AcceptedCase{"explainWorkers",
                     {"explain", "--warp", "--workers=1", "3"},
                     {.command = Command::explain, .workerCount = 1, .operands = {"3"}}},
        AcceptedCase{"doctorWorkers",
                     {"doctor", "--workers=64"},
                     {.command = Command::doctor, .workerCount = 64}},
        AcceptedCase{"doctor", {"doctor"}, {.command = Command::doctor}},
        AcceptedCase{
            "doctorJSON", {"doctor", "--json"}, {.command = Command::doctor, .isJSON = true}}),
    RowName());

struct RefusedCase {
  const char* name;
  Arguments arguments;
  const char* message;
};

class RefusedCommandLine : public testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedCommandLine, isAnsweredByOneLine) {
  const auto parsed = parseCommandLine(GetParam().arguments);
  ASSERT_TRUE(std::holds_alternative<UsageError>(parsed));
  EXPECT_EQ(std::get<UsageError>(parsed).message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, RefusedCommandLine,
    testing::Values(
        RefusedCase{"nothing", {}, "no command given; see velmora-warp-inspect --help"},
        RefusedCase{
            "separatorFirst", {"--", "check"}, "no command given; see velmora-warp-inspect --help"},
        RefusedCase{"unknownCommand", {"chec", "a"}, "unknown command: chec"},
        RefusedCase{"emptyCommand", {""}, "unknown command: "},
        RefusedCase{"commandWithControls", {"a\x1b\n"}, "unknown command: a??"},
        RefusedCase{"optionBeforeTheCommand", {"--json", "list"}, "unknown option: --json"},
        RefusedCase{
            "checkNothing", {"check"}, "no file given; see velmora-warp-inspect check --help"},
        RefusedCase{"checkSeparatorOnly",
                    {"check", "--"},
                    "no file given; see velmora-warp-inspect check --help"},
        RefusedCase{"explainNothing",
                    {"explain", "--warp"},
                    "no item given; see velmora-warp-inspect explain --help"},
        RefusedCase{"unknownLong", {"check", "--bogus", "a"}, "unknown option: --bogus"},
        RefusedCase{"unknownShort", {"check", "-x", "a"}, "unknown option: -x"},
        RefusedCase{"abbreviated", {"check", "--jso", "a"}, "unknown option: --jso"},
        RefusedCase{
            "ofAnotherCommand", {"list", "--kind", "index"}, "unknown option: --kind=index"},
        RefusedCase{"versionBehindTheCommand", {"list", "--version"}, "unknown option: --version"},
        RefusedCase{"warpForCheck", {"check", "--warp", "a"}, "unknown option: --warp"},
        RefusedCase{
            "flagWithValue", {"list", "--json=false"}, "json was given a disallowed flag override"},
        RefusedCase{"kindUnknown",
                    {"check", "--kind", "Index", "a"},
                    "--kind is manifest, index or marker, not Index"},
        RefusedCase{"kindEmpty", {"check", "--kind=", "a"}, "--kind without a value"},
        RefusedCase{"kindEmptyApart", {"check", "--kind", "", "a"}, "--kind without a value"},
        RefusedCase{"kindMissing", {"check", "a", "--kind"}, "--kind without a value"},
        RefusedCase{
            "kindBeforeTheSeparator", {"check", "--kind", "--", "a"}, "--kind without a value"},
        RefusedCase{
            "kindSwallowsAnOption", {"check", "--kind", "--json", "a"}, "--kind without a value"},
        RefusedCase{"kindTwice",
                    {"check", "--kind", "index", "--kind=marker", "a"},
                    "--kind: At Most 1 required but received 2"},
        RefusedCase{"listWithOperand", {"list", "a"}, "list takes no operand: a"},
        RefusedCase{"doctorWithOperand", {"doctor", "--", "-a"}, "doctor takes no operand: -a"},
        RefusedCase{
            "explainNeither", {"explain", "a"}, "explain takes one of --warp and --restore"},
        RefusedCase{"explainBoth",
                    {"explain", "--warp", "--restore", "a"},
                    "explain takes one of --warp and --restore"},
        RefusedCase{
            "workersForCheck", {"check", "--workers=2", "a"}, "unknown option: --workers=2"},
        RefusedCase{"workersNone",
                    {"list", "--workers", "0"},
                    "--workers takes a number from 1 to 64, not 0"},
        RefusedCase{"workersOfAnotherKind",
                    {"doctor", "--workers=all"},
                    "--workers takes a number from 1 to 64, not all"},
        RefusedCase{"workersMissing", {"list", "--workers", "--json"}, "--workers without a value"},
        RefusedCase{"itemsFromAFile",
                    {"check", "--files0-from=x"},
                    "--files0-from reads standard input only: --files0-from=-"},
        RefusedCase{
            "itemsFromNowhere", {"check", "--files0-from="}, "--files0-from without a value"},
        RefusedCase{"itemsFromBoth",
                    {"check", "--files0-from=-", "--", "a"},
                    "--files0-from=- and operands exclude each other"}),
    RowName());

struct HelpCase {
  const char* name;
  Arguments arguments;
  Arguments pieces;
};

class Help : public testing::TestWithParam<HelpCase> {};

TEST_P(Help, namesWhatThereIs) {
  const auto parsed = parseCommandLine(GetParam().arguments);
  ASSERT_TRUE(std::holds_alternative<RequestedText>(parsed));
  for (const std::string& piece : GetParam().pieces) {
    EXPECT_NE(std::get<RequestedText>(parsed).text.find(piece), std::string::npos) << piece;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Helps, Help,
    testing::Values(
        HelpCase{"program", {"--help"}, {"check", "list", "explain", "doctor", "--version"}},
        HelpCase{"check",
                 {"check", "--help"},
                 {"check [OPTIONS] [--] FILE...", "--kind", "--json", "--files0-from", "  64  "}},
        HelpCase{
            "list", {"list", "--help"}, {"list [OPTIONS]", "--json", "--workers", "Exit status:"}},
        HelpCase{"explain",
                 {"explain", "a", "--help"},
                 {"(--warp|--restore)", "--files0-from", "Exit status:"}},
        HelpCase{"doctor", {"doctor", "--help"}, {"doctor [OPTIONS]", "--json", "Exit status:"}}),
    RowName());

TEST(Version, isOfThisProgram) {
  const auto version = parseCommandLine({"--version"});
  ASSERT_TRUE(std::holds_alternative<RequestedText>(version));
  EXPECT_TRUE(std::get<RequestedText>(version).text.starts_with("velmora-warp-inspect "));
}

}  // namespace
}  // namespace velmora::inspect
