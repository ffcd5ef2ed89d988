// Unsuitable selections: the program shows the message in the user's language, and does nothing
// else.

#include "tests/process/ProcessTest.h"

namespace velmora::process {

namespace {

constexpr const char* warpMessage = "Select one or more normal folders to Warp to Velmora.";
constexpr const char* restoreMessage = "Select a warped Velmora item to restore.";

/// The bus and the application would show a signal or a launch.
class CancellationTest : public ProcessTest {
 protected:
  CancellationTest() {
    setBus(bus.address());
    receiver.listen("io.tolvane.Velmora");
    installApplication(execLine());
  }

  void expectUnsuitable(const Outcome& outcome, const std::string& text) {
    expectCancelled(outcome, 1, text + "\n");
    EXPECT_TRUE(receiver.receivedUntilGone(outcome.process).empty());
  }

  const std::string file = home.makeFile("file");
  PrivateBus bus;
  BusPeer receiver{bus.address()};
};

TEST_F(CancellationTest, selectionThatDoesNotSuitTheAction) {
  expectUnsuitable(run({file}), warpMessage);
  expectUnsuitable(run({home.path() / "missing"}), warpMessage);
  const std::string folder = home.makeFolder("A");
  expectUnsuitable(run({"--restore", folder}), restoreMessage);
  writeFile(folder + "/.velmora-warped.json", "{\"warpID\":\"1\"}");
  expectUnsuitable(run({"--restore", folder}), restoreMessage);
}

TEST_F(CancellationTest, identifierDecidesTheAction) {
  expectUnsuitable(
      run({"--bundle-identifier", "io.tolvane.Velmora.FinderRestoreAction", home.makeFolder("A")}),
      restoreMessage);
  for (const char* identifier : {"io.tolvane.velmora.finderrestoreaction", "", "-dash"}) {
    SCOPED_TRACE(identifier);
    expectUnsuitable(run({"--bundle-identifier=" + std::string(identifier), file}), warpMessage);
  }
}

TEST_F(CancellationTest, messageIsFoundBesideTheProgram) {
  command.environment.erase("VELMORA_RESOURCE_DIR");
  command.environment["LANG"] = "ja_JP.UTF-8";
  expectUnsuitable(run({file}), message("ja", chooseWarpFolders));
  // The moved program finds the messages beside its new place.
  const std::filesystem::path moved = home.path() / "moved";
  std::filesystem::create_directories(moved / "bin");
  std::filesystem::create_directories(moved / "share");
  std::filesystem::copy(VELMORA_TEST_RESOURCES, moved / "share" / "velmora-finder-action",
                        std::filesystem::copy_options::recursive);
  writeFile(moved / "share/velmora-finder-action/ja.lproj/Localizable.strings",
            "\"" + std::string(chooseWarpFolders) + "\" = \"moved\";");
  command.arguments = {moved / "bin" / "velmora-finder-action"};
  std::filesystem::copy_file(VELMORA_TEST_PROGRAM, command.arguments.front());
  expectUnsuitable(run({file}), "moved");
}

TEST_F(CancellationTest, messageIsInTheUsersLanguage) {
  const auto stored = [](const std::string& language) {
    return "[Defaults]\nVelmoraSelectedLanguage.v1=" + language + "\n";
  };
  const struct {
    const char* name;
    Environment variables;
    std::string settings;
    const char* language;
  } rows[] = {
      {"nothing said", {}, "", "en"},
      {"stored English", {{"LC_ALL", "ja_JP.UTF-8"}}, stored("en"), "en"},
      {"stored Japanese", {{"LC_ALL", "C"}}, stored("ja"), "ja"},
      {"stored Chinese", {}, stored("zh-Hans"), "zh-Hans"},
      {"stored Spanish", {}, stored("es"), "es"},
      {"stored Portuguese", {}, stored("pt-BR"), "pt-BR"},
      {"stored choice of the system", {{"LANG", "ja_JP.UTF-8"}}, stored("system"), "ja"},
      {"settings in disorder", {{"LANG", "es_ES.UTF-8"}}, stored("ja") + "stray\n", "es"},
      {"list before locale",
       {{"LANGUAGE", "zh_TW:pt_PT:es:ja"}, {"LANG", "en_US.UTF-8"}},
       "",
       "es"},
      {"no tables", {{"LANG", "ja_JP.UTF-8"}, {"VELMORA_RESOURCE_DIR", "/nowhere"}}, "", "en"},
  };
  const Environment before = command.environment;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    command.environment = before;
    for (const auto& [name, value] : row.variables) {
      command.environment[name] = value;
    }
    writeFile(home.configHome() / "group.io.tolvane.Velmora" / "defaults.conf", row.settings);
    expectUnsuitable(run({file}), message(row.language, chooseWarpFolders));
    expectUnsuitable(run({"--restore", file}), message(row.language, chooseWarpedItem));
  }
}

TEST_F(CancellationTest, messagesOfDifferentLanguagesDiffer) {
  for (const std::string_view key : {chooseWarpFolders, chooseWarpedItem}) {
    std::set<std::string> sentences;
    for (const char* language : {"en", "ja", "zh-Hans", "es", "pt-BR"}) {
      sentences.insert(message(language, key));
    }
    EXPECT_EQ(sentences.size(), 5U) << key;
  }
}

}  // namespace

}  // namespace velmora::process
