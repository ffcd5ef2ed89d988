// Selections that do not suit the action: the sentence in the user's language, and nothing else.

#include "tests/process/ProcessTest.h"

namespace velmora::process {

namespace {

constexpr const char* warpSentence = "Select one or more normal folders to Warp to Velmora.";
constexpr const char* restoreSentence = "Select a warped Velmora item to restore.";

/// With a bus to signal on and an application to launch, so that doing so would be noticed.
class CancellationTest : public ProcessTest {
 protected:
  CancellationTest() {
    setBus(bus.address());
    receiver.listen("io.tolvane.Velmora");
    installApplication(execLine());
  }

  void expectNothingSuits(const Outcome& outcome, const std::string& sentence) {
    expectCancelled(outcome, 1, sentence + "\n");
    EXPECT_TRUE(receiver.receivedUntilGone(outcome.process).empty());
  }

  const std::string file = home.makeFile("file");
  PrivateBus bus;
  BusPeer receiver{bus.address()};
};

TEST_F(CancellationTest, selectionThatDoesNotSuitTheAction) {
  expectNothingSuits(run({file}), warpSentence);
  expectNothingSuits(run({home.path() / "missing"}), warpSentence);
  const std::string folder = home.makeFolder("A");
  expectNothingSuits(run({"--restore", folder}), restoreSentence);
  writeFile(folder + "/.velmora-warped.json", "{\"warpID\":\"1\"}");
  expectNothingSuits(run({"--restore", folder}), restoreSentence);
}

TEST_F(CancellationTest, identifierDecidesTheAction) {
  expectNothingSuits(
      run({"--bundle-identifier", "io.tolvane.Velmora.FinderRestoreAction", home.makeFolder("A")}),
      restoreSentence);
  for (const char* identifier : {"io.tolvane.velmora.finderrestoreaction", "", "-dash"}) {
    SCOPED_TRACE(identifier);
    expectNothingSuits(run({"--bundle-identifier=" + std::string(identifier), file}), warpSentence);
  }
}

TEST_F(CancellationTest, sentenceIsFoundBesideTheProgram) {
  command.environment.erase("VELMORA_RESOURCE_DIR");
  command.environment["LANG"] = "ja_JP.UTF-8";
  expectNothingSuits(run({file}), message("ja", chooseWarpFolders));
  // And beside one that was moved.
  const std::filesystem::path moved = home.path() / "moved";
  std::filesystem::create_directories(moved / "bin");
  std::filesystem::create_directories(moved / "share");
  std::filesystem::copy(VELMORA_TEST_RESOURCES, moved / "share" / "velmora-finder-action",
                        std::filesystem::copy_options::recursive);
  writeFile(moved / "share/velmora-finder-action/ja.lproj/Localizable.strings",
            "\"" + std::string(chooseWarpFolders) + "\" = \"moved\";");
  command.arguments = {moved / "bin" / "velmora-finder-action"};
  std::filesystem::copy_file(VELMORA_TEST_PROGRAM, command.arguments.front());
  expectNothingSuits(run({file}), "moved");
}

TEST_F(CancellationTest, sentenceIsInTheUsersLanguage) {
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
    expectNothingSuits(run({file}), message(row.language, chooseWarpFolders));
    expectNothingSuits(run({"--restore", file}), message(row.language, chooseWarpedItem));
  }
}

TEST_F(CancellationTest, sentencesOfDifferentLanguagesDiffer) {
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
