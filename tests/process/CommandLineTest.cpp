// The command line: accepted arguments, and messages for wrong ones.

#include "tests/process/ProcessTest.h"

#include <algorithm>
#include <utility>

namespace velmora::process {

namespace {

class CommandLineTest : public ProcessTest {};

TEST_F(CommandLineTest, usageErrorsAreOneLine) {
  home.makeFolder("A");
  command.workingDirectory = home.folders();
  installApplication(execLine());
  const std::vector<std::string> rows[] = {
      {},
      {"--un\nknown", "A"},
      {"A", "--unknown"},
      {"--files0-from="},
      {"--bundle-identifier", "--check", "A"},
  };
  for (const std::vector<std::string>& arguments : rows) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    const Outcome outcome = run(arguments);
    expectCancelled(outcome, 64, outcome.error);
    EXPECT_TRUE(outcome.error.starts_with("velmora-finder-action: ")) << outcome.error;
    EXPECT_EQ(std::ranges::count(outcome.error, '\n'), 1) << outcome.error;
    EXPECT_TRUE(outcome.error.ends_with('\n'));
  }
}

TEST_F(CommandLineTest, helpAndVersionArePrintedOnly) {
  const Outcome help = run({"--help"});
  EXPECT_EQ(help.exitStatus, 0);
  EXPECT_EQ(help.error, "");
  EXPECT_NE(help.output.find("--bundle-identifier"), std::string::npos) << help.output;
  EXPECT_EQ(made(), std::set<std::string>());
  const Outcome version = run({"--version"});
  EXPECT_EQ(version.exitStatus, 0);
  EXPECT_EQ(version.error, "");
  EXPECT_EQ(version.output, "velmora-finder-action " VELMORA_TEST_VERSION "\n");
  EXPECT_EQ(made(), std::set<std::string>());
}

TEST_F(CommandLineTest, helpThatCannotBeWrittenIsAnError) {
  command.arguments = {"sh", "-c", R"(exec "$0" "$@" >/dev/full)", VELMORA_TEST_PROGRAM};
  for (const char* argument : {"--help", "--version"}) {
    expectCancelled(run({argument}), 2,
                    "velmora-finder-action: cannot write the answer: No space left on device\n");
  }
}

TEST_F(CommandLineTest, optionsOfASuccessfulRequestMayBeCombined) {
  const std::string folder = home.makeFolder("A");
  expectHandedOver(run({"--no-notify", "--bundle-identifier", "other", "--", folder}), {folder});
}

TEST_F(CommandLineTest, listOfManyFoldersArrivesInOrder) {
  // The list is longer than a pipe holds, and its last item has no NUL.
  std::vector<std::string> folders;
  std::string list;
  for (int number = 0; number < 1000; ++number) {
    folders.push_back(home.makeFolder(std::string(100, 'x') + std::to_string(number * 919 % 1000)));
    list += folders.back() + '\0';
  }
  list.pop_back();
  command.input = list;
  expectHandedOver(run({"--files0-from=-"}), folders);
}

TEST_F(CommandLineTest, listedItemsThatLookLikeOptionsAreItems) {
  const std::vector<std::string> folders = {home.makeFolder("--restore"), home.makeFolder("--"),
                                            home.makeFolder("line\nbreak")};
  command.input = std::string("--restore\0--\0line\nbreak\0", 24);
  command.workingDirectory = home.folders();
  expectHandedOver(run({"--files0-from=-"}), folders);
}

TEST_F(CommandLineTest, emptyListIsAnEmptySelection) {
  command.input = "";
  expectCancelled(run({"--files0-from=-"}), 1, message("en", chooseWarpFolders) + "\n");
  command.input.reset();
  expectCancelled(run({"--files0-from=-", "--restore"}), 1, message("en", chooseWarpedItem) + "\n");
}

TEST_F(CommandLineTest, listThatCannotBeReadIsAnError) {
  const std::pair<const char*, const char*> rows[] = {
      {"</", "cannot read standard input: Is a directory"},
      {"<&-", "cannot read standard input: Bad file descriptor"},
      {"</dev/zero", "standard input is longer than 16 MiB"}};
  for (const auto& [redirection, message] : rows) {
    command.arguments = {"sh", "-c", std::string(R"(exec "$0" "$@" )") + redirection,
                         VELMORA_TEST_PROGRAM};
    expectCancelled(run({"--files0-from=-"}), 64,
                    std::string("velmora-finder-action: ") + message + "\n");
    expectCancelled(run({"--check", "--files0-from=-"}), 1, "");
  }
}

TEST_F(CommandLineTest, listMayHave100000Items) {
  command.input = std::string(100'000, '\0');
  expectCancelled(run({"--files0-from=-"}), 1, message("en", chooseWarpFolders) + "\n");
  *command.input += '\0';
  expectCancelled(run({"--files0-from=-"}), 64,
                  "velmora-finder-action: standard input names more than 100000 items\n");
}

}  // namespace

}  // namespace velmora::process
