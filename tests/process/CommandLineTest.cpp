// The command line: what is understood, and how misunderstandings are told.

#include "tests/support/RowName.h"
#include "tests/process/ProcessTest.h"

#include <algorithm>

namespace velmora::process {

namespace {

struct UsageCase {
  const char* name;
  std::vector<std::string> arguments;
};

class UsageTest : public ProcessTest, public ::testing::WithParamInterface<UsageCase> {};

TEST_P(UsageTest, isAnErrorOfOneLine) {
  home.makeFolder("A");
  home.makeFolder("-dash");
  command.workingDirectory = home.path() / "folders";
  installApplication(execLine());
  const Outcome outcome = run(GetParam().arguments);
  expectCancelled(outcome, 64, outcome.error);
  EXPECT_EQ(std::ranges::count(outcome.error, '\n'), 1) << outcome.error;
  EXPECT_TRUE(outcome.error.ends_with('\n'));
  EXPECT_GT(outcome.error.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    Usage, UsageTest,
    ::testing::Values(
        UsageCase{"nothing", {}}, UsageCase{"optionsOnly", {"--restore", "--no-notify"}},
        UsageCase{"endOfOptionsOnly", {"--"}}, UsageCase{"checkOnly", {"--check"}},
        UsageCase{"unknownOption", {"--unknown", "A"}},
        UsageCase{"unknownOptionWithALineBreak", {"--un\nknown", "A"}},
        UsageCase{"unknownShortOption", {"-x", "A"}},
        UsageCase{"nameThatLooksLikeAnOption", {"-dash"}},
        UsageCase{"unknownOptionAfterAnItem", {"A", "--unknown"}},
        UsageCase{"valueForAFlag", {"--check=yes", "A"}},
        UsageCase{"identifierWithoutValue", {"--bundle-identifier"}},
        UsageCase{"listAndItems", {"--files0-from=-", "A"}},
        UsageCase{"listAndItemsAfterTheEndOfOptions", {"--files0-from=-", "--", "A"}},
        UsageCase{"listFromAFile", {"--files0-from=x"}},
        UsageCase{"listFromNowhere", {"--files0-from="}},
        UsageCase{"restoreAndIdentifier",
                  {"--restore", "--bundle-identifier", "io.tolvane.Velmora.FinderAction", "A"}},
        UsageCase{
            "restoreAndIdentifierOfRestore",
            {"--restore", "--bundle-identifier=io.tolvane.Velmora.FinderRestoreAction", "A"}}),
    RowName());

class CommandLineTest : public ProcessTest {};

TEST_F(CommandLineTest, helpIsPrintedAndNothingDone) {
  const Outcome outcome = run({"--help"});
  EXPECT_EQ(outcome.exitStatus, 0);
  EXPECT_EQ(outcome.error, "");
  for (const char* option : {"--bundle-identifier", "--restore", "--check", "--no-notify",
                             "--workers", "--files0-from"}) {
    EXPECT_NE(outcome.output.find(option), std::string::npos) << option;
  }
  EXPECT_EQ(made(), std::set<std::string>());
}

TEST_F(CommandLineTest, versionIsPrintedAndNothingDone) {
  const Outcome outcome = run({"--version"});
  EXPECT_EQ(outcome.exitStatus, 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.output, "velmora-finder-action " VELMORA_TEST_VERSION "\n");
  EXPECT_EQ(made(), std::set<std::string>());
}

TEST_F(CommandLineTest, optionsOfASuccessfulRequestMayBeCombined) {
  const std::string folder = home.makeFolder("A");
  expectCompleted(run({"--no-notify", "--bundle-identifier", "other", "--", folder}));
  EXPECT_EQ(onlyRequest().folderPaths, std::vector<std::string>{folder});
}

class ListTest : public ProcessTest {
 protected:
  static std::string joined(const std::vector<std::string>& items) {
    std::string result;
    for (const std::string& item : items) {
      result += item + '\0';
    }
    return result;
  }
};

TEST_F(ListTest, thousandsOfFoldersArriveInOrder) {
  std::vector<std::string> folders;
  for (int number = 0; number < 5000; ++number) {
    folders.push_back(home.makeFolder("folder " + std::to_string(number * 7919 % 5000)));
  }
  command.input = joined(folders);
  expectCompleted(run({"--files0-from=-"}));
  EXPECT_EQ(onlyRequest().folderPaths, folders);
}

TEST_F(ListTest, lastItemMayGoWithoutItsEnd) {
  const std::vector<std::string> folders = {home.makeFolder("A"), home.makeFolder("line\nbreak")};
  command.input = folders[0] + '\0' + folders[1];
  expectCompleted(run({"--files0-from=-"}));
  EXPECT_EQ(onlyRequest().folderPaths, folders);
}

TEST_F(ListTest, itemsThatLookLikeOptionsAreItems) {
  const std::vector<std::string> folders = {home.makeFolder("--restore"), home.makeFolder("--")};
  command.input = joined({"--restore", "--"});
  command.workingDirectory = home.path() / "folders";
  expectCompleted(run({"--files0-from=-"}));
  EXPECT_EQ(onlyRequest().folderPaths, folders);
}

TEST_F(ListTest, emptyListIsAnEmptySelection) {
  command.input = "";
  expectCancelled(run({"--files0-from=-"}), 1, message("en", chooseWarpFolders) + "\n");
  command.input.reset();
  expectCancelled(run({"--files0-from=-", "--restore"}), 1, message("en", chooseWarpedItem) + "\n");
}

TEST_F(ListTest, listOfOnlyFilesIsRefused) {
  command.input = joined({home.makeFile("a"), home.makeFile("b")});
  expectCancelled(run({"--files0-from=-"}), 1, message("en", chooseWarpFolders) + "\n");
}

}  // namespace

}  // namespace velmora::process
