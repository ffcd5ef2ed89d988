#include "CommandLine.h"
#include "tests/support/RowName.h"

#include <gtest/gtest.h>

namespace velmora {
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
  const CommandLine& line = std::get<CommandLine>(parsed);
  const CommandLine& expected = GetParam().commandLine;
  EXPECT_EQ(line.bundleIdentifier, expected.bundleIdentifier);
  EXPECT_EQ(line.isCheck, expected.isCheck);
  EXPECT_EQ(line.notifiesDesktop, expected.notifiesDesktop);
  EXPECT_EQ(line.workerCount, expected.workerCount);
  EXPECT_EQ(line.readsStandardInput, expected.readsStandardInput);
  EXPECT_EQ(line.operands, expected.operands);
}

CommandLine operands(Arguments items) {
  CommandLine line;
  line.operands = std::move(items);
  return line;
}

CommandLine identified(const char* identifier, Arguments items) {
  CommandLine line = operands(std::move(items));
  line.bundleIdentifier = identifier;
  return line;
}

constexpr const char* restoreIdentifier = "io.tolvane.Velmora.FinderRestoreAction";

INSTANTIATE_TEST_SUITE_P(
    CommandLines, AcceptedCommandLine,
    testing::Values(
        AcceptedCase{"oneOperand", {"/a"}, operands({"/a"})},
        AcceptedCase{"operandsInOrder", {"/b", "/a", "c d"}, operands({"/b", "/a", "c d"})},
        AcceptedCase{"restore", {"--restore", "a"}, identified(restoreIdentifier, {"a"})},
        AcceptedCase{"identifier", {"--bundle-identifier", "x.y", "a"}, identified("x.y", {"a"})},
        AcceptedCase{"identifierJoined", {"--bundle-identifier=x", "a"}, identified("x", {"a"})},
        AcceptedCase{"emptyIdentifier", {"--bundle-identifier=", "a"}, identified("", {"a"})},
        AcceptedCase{
            "emptyIdentifierApart", {"--bundle-identifier", "", "a"}, identified("", {"a"})},
        AcceptedCase{"check", {"--check", "a"}, {.isCheck = true, .operands = {"a"}}},
        AcceptedCase{
            "noNotify", {"--no-notify", "a"}, {.notifiesDesktop = false, .operands = {"a"}}},
        AcceptedCase{"workers", {"--workers", "3", "a"}, {.workerCount = 3, .operands = {"a"}}},
        AcceptedCase{
            "workersJoined", {"--workers=64", "a"}, {.workerCount = 64, .operands = {"a"}}},
        AcceptedCase{
            "workersBehindTheSeparator", {"--", "--workers", "3"}, operands({"--workers", "3"})},
        AcceptedCase{"standardInput", {"--files0-from=-"}, {.readsStandardInput = true}},
        AcceptedCase{"standardInputApart", {"--files0-from", "-"}, {.readsStandardInput = true}},
        AcceptedCase{"optionsBehindOperands",
                     {"a", "--check", "b"},
                     {.isCheck = true, .operands = {"a", "b"}}},
        AcceptedCase{"separator",
                     {"--", "-dash", "--restore", "--"},
                     operands({"-dash", "--restore", "--"})},
        AcceptedCase{"operandsAroundTheSeparator", {"a", "--", "b"}, operands({"a", "b"})},
        AcceptedCase{"brackets", {"[a,b]", "{}", "[]"}, operands({"[a,b]", "{}", "[]"})},
        AcceptedCase{"quotesAndEquals", {"\"a\"", "'b'", "c=d"}, operands({"\"a\"", "'b'", "c=d"})},
        AcceptedCase{"emptyOperand", {""}, operands({""})},
        AcceptedCase{"singleDash", {"-"}, operands({"-"})},
        AcceptedCase{"notUTF8", {"\xff"}, operands({"\xff"})},
        AcceptedCase{"newlineAndBlank", {"a\nb", " "}, operands({"a\nb", " "})}),
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
        RefusedCase{"nothing", {}, "no item given; see velmora-finder-action --help"},
        RefusedCase{"separatorOnly", {"--"}, "no item given; see velmora-finder-action --help"},
        RefusedCase{"optionsOnly", {"--check"}, "no item given; see velmora-finder-action --help"},
        RefusedCase{"unknownLong", {"--bogus", "a"}, "unknown option: --bogus"},
        RefusedCase{"unknownShort", {"-x", "a"}, "unknown option: -x"},
        RefusedCase{"abbreviated", {"--chec", "a"}, "unknown option: --chec"},
        RefusedCase{"bothIdentities",
                    {"--restore", "--bundle-identifier", "x", "a"},
                    "--restore and --bundle-identifier exclude each other"},
        RefusedCase{"bothIdentitiesOneEmpty",
                    {"--restore", "--bundle-identifier=", "a"},
                    "--restore and --bundle-identifier exclude each other"},
        RefusedCase{"identifierSwallowsAnOption",
                    {"--bundle-identifier", "--restore", "a"},
                    "--bundle-identifier without an identifier"},
        RefusedCase{"identifierTwice",
                    {"--bundle-identifier", "x", "--bundle-identifier", "y", "a"},
                    "--bundle-identifier: At Most 1 required but received 2"},
        RefusedCase{"identifierMissing",
                    {"--bundle-identifier", "--", "a"},
                    "--bundle-identifier: 1 required ID missing"},
        RefusedCase{
            "flagWithValue", {"--check=false", "a"}, "check was given a disallowed flag override"},
        RefusedCase{
            "workersNone", {"--workers", "0", "a"}, "--workers takes a number from 1 to 64, not 0"},
        RefusedCase{"workersTooMany",
                    {"--workers=65", "a"},
                    "--workers takes a number from 1 to 64, not 65"},
        RefusedCase{"workersWithControls",
                    {"--workers=1\n", "a"},
                    "--workers takes a number from 1 to 64, not 1?"},
        RefusedCase{"workersSwallowAnOption",
                    {"--workers", "--check", "a"},
                    "--workers takes a number from 1 to 64, not --check"},
        RefusedCase{"workersEmpty", {"--workers=", "3"}, "--workers without a number"},
        RefusedCase{"workersEmptyApart", {"--workers", "", "3"}, "--workers without a number"},
        RefusedCase{
            "workersMissing", {"a", "--workers", "--", "3"}, "--workers: 1 required N missing"},
        RefusedCase{"workersTwice",
                    {"--workers", "2", "--workers=2", "a"},
                    "--workers: At Most 1 required but received 2"},
        RefusedCase{"itemsFromAFile",
                    {"--files0-from=x"},
                    "--files0-from reads standard input only: --files0-from=-"},
        RefusedCase{"itemsFromBoth",
                    {"--files0-from=-", "a"},
                    "--files0-from=- and operands exclude each other"},
        RefusedCase{"itemsFromBothBehindTheSeparator",
                    {"--files0-from=-", "--", "a"},
                    "--files0-from=- and operands exclude each other"}),
    RowName());

TEST(RequestedTexts, areHelpAndVersion) {
  const auto help = parseCommandLine({"--help"});
  ASSERT_TRUE(std::holds_alternative<RequestedText>(help));
  for (const char* option : {"--bundle-identifier", "--restore", "--check", "--no-notify",
                             "--workers", "--files0-from", "--help", "--version", "Exit status:"}) {
    EXPECT_NE(std::get<RequestedText>(help).text.find(option), std::string::npos) << option;
  }
  const auto version = parseCommandLine({"--version"});
  ASSERT_TRUE(std::holds_alternative<RequestedText>(version));
  EXPECT_TRUE(std::get<RequestedText>(version).text.starts_with("velmora-finder-action "));
}

}  // namespace
}  // namespace velmora
