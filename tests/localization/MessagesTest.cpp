#include "localization/Messages.h"
#include "tests/support/RowName.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct ErrorCase {
  const char* name;
  RequestError (*makeError)(bool isRestore, const Platform& platform);
  bool isRestore;
  int code;
  const char* key;
  const char* englishText;
};

class Errors : public testing::TestWithParam<ErrorCase> {
 protected:
  RequestError error() { return GetParam().makeError(GetParam().isRestore, fake.platform()); }

  FakePlatform fake;
};

TEST_P(Errors, carryDomainCodeAndEnglishTextWithoutResources) {
  EXPECT_EQ(error(), (RequestError{.domain = "io.tolvane.Velmora.FinderAction",
                                   .code = GetParam().code,
                                   .localizedDescription = GetParam().englishText}));
}

TEST_P(Errors, carryTheTextOfTheChosenLanguage) {
  fake.defaults.values[{"group.io.tolvane.Velmora", "VelmoraSelectedLanguage.v1"}] = "ja";
  fake.languages.tags = {"en-US"};
  fake.bundle.tables["ja"] = {{GetParam().key, "日本語"}};
  fake.bundle.tables["en"] = {{GetParam().key, "English"}};
  EXPECT_EQ(error().localizedDescription, "日本語");
}

TEST_P(Errors, followTheSystemWithoutAChoice) {
  fake.defaults.values[{"group.io.tolvane.Velmora", "VelmoraSelectedLanguage.v1"}] = "system";
  fake.languages.tags = {"ja-JP"};
  fake.bundle.tables["ja"] = {{GetParam().key, "日本語"}};
  EXPECT_EQ(error().localizedDescription, "日本語");
}

TEST_P(Errors, fallBackToTheirEnglishTextNotToTheEnglishTable) {
  fake.languages.tags = {"pt-BR"};
  fake.bundle.tables["en"] = {{GetParam().key, "from the English table"}};
  EXPECT_EQ(error().localizedDescription, GetParam().englishText);
}

TEST_P(Errors, fallBackToTheirEnglishTextForAMissingKey) {
  fake.languages.tags = {"es"};
  fake.bundle.tables["es"] = {{"another.key", "otro"}};
  EXPECT_EQ(error().localizedDescription, GetParam().englishText);
}

TEST_P(Errors, noticeAChangedChoiceAtOnce) {
  fake.bundle.tables["es"] = {{GetParam().key, "español"}};
  EXPECT_EQ(error().localizedDescription, GetParam().englishText);
  fake.defaults.values[{"group.io.tolvane.Velmora", "VelmoraSelectedLanguage.v1"}] = "es";
  EXPECT_EQ(error().localizedDescription, "español");
}

INSTANTIATE_TEST_SUITE_P(
    SituationsAndActions, Errors,
    testing::Values(
        ErrorCase{"warpSelection", makeSelectionError, false, 1,
                  "consumer.finder-service.error.choose-warp-folders",
                  "Select one or more normal folders to Warp to Velmora."},
        ErrorCase{"restoreSelection", makeSelectionError, true, 1,
                  "consumer.finder-service.error.choose-warped-item",
                  "Select a warped Velmora item to restore."},
        ErrorCase{"warpHandoff", makeHandoffError, false, 2,
                  "consumer.finder-service.error.warp-handoff-failed",
                  "Velmora could not start this Warp action. Open Velmora and try again."},
        ErrorCase{"restoreHandoff", makeHandoffError, true, 2,
                  "consumer.finder-service.error.restore-handoff-failed",
                  "Velmora could not start this Restore action. Open Velmora and try again."}),
    RowName());

TEST(LocalizedMessage, keepsAnEmptyText) {
  FakeExtensionBundle bundle;
  bundle.tables["ja"] = {{"key", ""}};
  EXPECT_EQ(localizedMessage("key", "English", VelmoraLanguage::japanese, bundle), "");
}

}  // namespace
}  // namespace velmora
