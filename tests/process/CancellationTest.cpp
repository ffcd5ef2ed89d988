// Selections that do not suit the action: the sentence in the user's language, and nothing else.

#include "tests/support/RowName.h"
#include "tests/process/Buses.h"
#include "tests/process/ProcessTest.h"

#include <sys/stat.h>

namespace velmora::process {

namespace {

/// With a bus to signal on and an application to launch, so that doing so would be noticed.
class CancellationTest : public ProcessTest {
 protected:
  CancellationTest() {
    command.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
    installApplication(execLine());
  }

  void expectNothingSuits(const Outcome& outcome, const std::string& sentence) {
    expectCancelled(outcome, 1, sentence + "\n");
    EXPECT_TRUE(receiver.recordsUntilGone(outcome.process).empty());
  }

  PrivateBus bus{home};
  Peer receiver{bus.address(), {"--match", handoffRule}};
};

TEST_F(CancellationTest, fileAloneCannotBeWarped) {
  expectNothingSuits(run({home.makeFile("file")}),
                     "Select one or more normal folders to Warp to Velmora.");
}

TEST_F(CancellationTest, missingItemCannotBeWarped) {
  expectNothingSuits(run({home.path() / "missing"}),
                     "Select one or more normal folders to Warp to Velmora.");
}

TEST_F(CancellationTest, ordinaryFolderCannotBeRestored) {
  expectNothingSuits(run({"--restore", home.makeFolder("A")}),
                     "Select a warped Velmora item to restore.");
}

TEST_F(CancellationTest, folderWithAMarkerOfItsOwnMakingCannotBeRestored) {
  const std::string folder = home.makeFolder("A");
  writeFile(std::filesystem::path(folder) / ".velmora-warped.json", "{\"warpID\":\"1\"}");
  expectNothingSuits(run({"--restore", folder}), "Select a warped Velmora item to restore.");
}

TEST_F(CancellationTest, identifierDecidesTheAction) {
  expectNothingSuits(
      run({"--bundle-identifier", "io.tolvane.Velmora.FinderRestoreAction", home.makeFolder("A")}),
      "Select a warped Velmora item to restore.");
  for (const char* identifier :
       {"io.tolvane.Velmora.FinderAction", "io.tolvane.velmora.finderrestoreaction", "", "-dash"}) {
    SCOPED_TRACE(identifier);
    expectNothingSuits(
        run({"--bundle-identifier=" + std::string(identifier), home.makeFile("file")}),
        "Select one or more normal folders to Warp to Velmora.");
  }
}

TEST_F(CancellationTest, sentenceIsFoundBesideTheProgram) {
  command.environment.erase("VELMORA_RESOURCE_DIR");
  command.environment["LANG"] = "ja_JP.UTF-8";
  expectNothingSuits(run({home.makeFile("file")}), message("ja", chooseWarpFolders));
}

TEST_F(CancellationTest, sentenceIsFoundBesideAProgramThatWasMoved) {
  command.environment.erase("VELMORA_RESOURCE_DIR");
  command.environment["LANG"] = "es_ES.UTF-8";
  std::filesystem::create_directories(home.path() / "moved" / "bin");
  std::filesystem::create_directories(home.path() / "moved" / "share");
  const std::filesystem::path program = home.path() / "moved" / "bin" / "velmora-finder-action";
  std::filesystem::copy_file(VELMORA_TEST_PROGRAM, program);
  std::filesystem::copy(VELMORA_TEST_RESOURCES,
                        home.path() / "moved" / "share" / "velmora-finder-action",
                        std::filesystem::copy_options::recursive);
  command.arguments = {program};
  expectNothingSuits(run({home.makeFile("file")}), message("es", chooseWarpFolders));
}

struct LanguageCase {
  const char* name;
  std::vector<std::pair<const char*, const char*>> variables;
  /// The settings of the application; none without.
  const char* settings;
  const char* language;
};

class LanguageTest : public CancellationTest, public ::testing::WithParamInterface<LanguageCase> {};

TEST_P(LanguageTest, sentenceIsInTheUsersLanguage) {
  for (const auto& [name, value] : GetParam().variables) {
    command.environment[name] = value;
  }
  if (GetParam().settings != nullptr) {
    writeFile(home.configHome() / "group.io.tolvane.Velmora" / "defaults.conf",
              GetParam().settings);
  }
  const std::string warp = message(GetParam().language, chooseWarpFolders);
  const std::string restore = message(GetParam().language, chooseWarpedItem);
  const bool isEnglish = std::string_view(GetParam().language) == "en";
  EXPECT_EQ(warp == message("en", chooseWarpFolders), isEnglish);
  EXPECT_EQ(restore == message("en", chooseWarpedItem), isEnglish);
  expectNothingSuits(run({home.makeFile("file")}), warp);
  expectNothingSuits(run({"--restore", home.makeFile("file")}), restore);
}

INSTANTIATE_TEST_SUITE_P(
    Languages, LanguageTest,
    ::testing::Values(
        LanguageCase{"nothingSaid", {}, nullptr, "en"},
        LanguageCase{"storedEnglish",
                     {{"LC_ALL", "ja_JP.UTF-8"}},
                     "[Defaults]\nVelmoraSelectedLanguage.v1=en\n",
                     "en"},
        LanguageCase{"storedJapanese",
                     {{"LC_ALL", "C"}},
                     "[Defaults]\nVelmoraSelectedLanguage.v1=ja\n",
                     "ja"},
        LanguageCase{"storedSimplifiedChinese",
                     {},
                     "[Defaults]\nVelmoraSelectedLanguage.v1=zh-Hans\n",
                     "zh-Hans"},
        LanguageCase{"storedSpanish", {}, "[Defaults]\nVelmoraSelectedLanguage.v1=es\n", "es"},
        LanguageCase{
            "storedPortuguese", {}, "[Defaults]\nVelmoraSelectedLanguage.v1=pt-BR\n", "pt-BR"},
        LanguageCase{"storedSystem",
                     {{"LANG", "ja_JP.UTF-8"}},
                     "[Defaults]\nVelmoraSelectedLanguage.v1=system\n",
                     "ja"},
        LanguageCase{"storedUnknown",
                     {{"LANG", "es_ES.UTF-8"}},
                     "[Defaults]\nVelmoraSelectedLanguage.v1=JA\n",
                     "es"},
        LanguageCase{"storedElsewhere",
                     {{"LANG", "es_ES.UTF-8"}},
                     "[Other]\nVelmoraSelectedLanguage.v1=ja\n",
                     "es"},
        LanguageCase{"settingsInDisorder",
                     {{"LANG", "es_ES.UTF-8"}},
                     "[Defaults]\nVelmoraSelectedLanguage.v1=ja\nstray\n",
                     "es"},
        LanguageCase{"allCategories",
                     {{"LC_ALL", "pt_BR.UTF-8"}, {"LC_MESSAGES", "ja_JP"}, {"LANG", "es_ES"}},
                     nullptr,
                     "pt-BR"},
        LanguageCase{"messagesCategory",
                     {{"LC_ALL", ""}, {"LC_MESSAGES", "zh_CN.UTF-8"}, {"LANG", "es_ES"}},
                     nullptr,
                     "zh-Hans"},
        LanguageCase{"listBeforeLocale",
                     {{"LANGUAGE", "zh_TW:pt_PT:es:ja"}, {"LANG", "en_US.UTF-8"}},
                     nullptr,
                     "es"},
        LanguageCase{
            "listIsIgnoredInTheCLocale", {{"LANGUAGE", "ja"}, {"LC_ALL", "C"}}, nullptr, "en"},
        LanguageCase{"listCountsInTheCUtf8Locale",
                     {{"LANGUAGE", "ja"}, {"LC_ALL", "C.UTF-8"}},
                     nullptr,
                     "ja"},
        LanguageCase{"traditionalChineseIsNotOffered", {{"LANG", "zh_TW.UTF-8"}}, nullptr, "en"},
        LanguageCase{"europeanPortugueseIsNotOffered", {{"LANG", "pt_PT@euro"}}, nullptr, "en"}),
    RowName());

TEST_F(CancellationTest, settingsOfAnotherKindAreNotWaitedFor) {
  const std::filesystem::path file =
      home.configHome() / "group.io.tolvane.Velmora" / "defaults.conf";
  std::filesystem::create_directories(file.parent_path());
  ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  command.environment["LANG"] = "ja_JP.UTF-8";
  expectNothingSuits(run({home.makeFile("file")}), message("ja", chooseWarpFolders));
}

TEST_F(CancellationTest, sentenceIsEnglishWithoutTables) {
  command.environment["LANG"] = "ja_JP.UTF-8";
  command.environment["VELMORA_RESOURCE_DIR"] = home.path() / "nowhere";
  expectNothingSuits(run({home.makeFile("file")}), message("en", chooseWarpFolders));
}

}  // namespace

}  // namespace velmora::process
