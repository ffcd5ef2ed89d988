#include "localization/Messages.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace velmora {
namespace {

struct Situation {
  const char* name;
  RequestError (*makeError)(ActionKind action, const Platform& platform);
  ActionKind action;
  int code;
  const char* key;
  const char* englishText;
};

const Situation situations[] = {
    {"warpSelection", makeSelectionError, ActionKind::warp, 1,
     "consumer.finder-service.error.choose-warp-folders",
     "Select one or more normal folders to Warp to Velmora."},
    {"restoreSelection", makeSelectionError, ActionKind::restore, 1,
     "consumer.finder-service.error.choose-warped-item",
     "Select a warped Velmora item to restore."},
    {"warpHandoff", makeHandoffError, ActionKind::warp, 2,
     "consumer.finder-service.error.warp-handoff-failed",
     "Velmora could not start this Warp action. Open Velmora and try again."},
    {"restoreHandoff", makeHandoffError, ActionKind::restore, 2,
     "consumer.finder-service.error.restore-handoff-failed",
     "Velmora could not start this Restore action. Open Velmora and try again."}};

const std::pair<std::string, std::string> choice = {"group.io.tolvane.Velmora",
                                                    "VelmoraSelectedLanguage.v1"};

TEST(Errors, haveDomainCodeAndEnglishTextWithoutResources) {
  for (const Situation& row : situations) {
    FakePlatform fake;
    EXPECT_EQ(row.makeError(row.action, fake.platform()),
              (RequestError{.domain = "io.tolvane.Velmora.FinderAction",
                            .code = row.code,
                            .localizedDescription = row.englishText}))
        << row.name;
  }
}

TEST(Errors, haveTheTextOfTheLanguageOrTheirEnglishText) {
  struct Row {
    const char* chosen;
    const char* preferred;
    const char* table;
    bool isTableUsed;
  };
  const Row rows[] = {{"ja", "en-US", "ja", true},
                      {"system", "ja-JP", "ja", true},
                      // The English table does not replace a missing table.
                      {"", "pt-BR", "en", false},
                      {"", "es", "es", true}};
  for (const Situation& situation : situations) {
    FakePlatform fake;
    const auto text = [&] {
      return situation.makeError(situation.action, fake.platform()).localizedDescription;
    };
    for (const Row& row : rows) {
      SCOPED_TRACE(std::string(situation.name) + ", " + row.chosen + ", " + row.preferred);
      fake.defaults.values = {{choice, row.chosen}};
      fake.languages.tags = {row.preferred};
      fake.bundle.tables.clear();
      fake.bundle.tables[row.table] = {{situation.key, "日本語"}};
      EXPECT_EQ(text(), row.isTableUsed ? "日本語" : situation.englishText);
      fake.bundle.tables[row.table] = {{"another.key", "otro"}};
      EXPECT_EQ(text(), situation.englishText);
    }
  }
}

TEST(LocalizedMessage, keepsAnEmptyText) {
  FakeExtensionBundle bundle;
  bundle.tables["ja"] = {{"key", ""}};
  EXPECT_EQ(localizedMessage("key", "English", VelmoraLanguage::japanese, bundle), "");
}

}  // namespace
}  // namespace velmora
