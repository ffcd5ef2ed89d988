#include "localization/VelmoraLanguage.h"
#include "tests/support/RowName.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using enum VelmoraLanguage;

TEST(VelmoraLanguages, matchInTheirDeclaredOrder) {
  std::vector<std::string_view> rawValues;
  for (const VelmoraLanguage language : velmoraLanguages) {
    rawValues.push_back(rawValue(language));
  }
  EXPECT_EQ(rawValues,
            (std::vector<std::string_view>{"system", "en", "ja", "zh-Hans", "es", "pt-BR"}));
}

struct StoredCase {
  const char* name;
  const char* stored;
  VelmoraLanguage language;
};

class SelectedLanguage : public testing::TestWithParam<StoredCase> {};

TEST_P(SelectedLanguage, isTheStoredRawValue) {
  FakeSharedDefaults defaults;
  defaults.values[{"group.io.tolvane.Velmora", "VelmoraSelectedLanguage.v1"}] = GetParam().stored;
  EXPECT_EQ(selectedLanguage(defaults), GetParam().language);
}

INSTANTIATE_TEST_SUITE_P(
    StoredValues, SelectedLanguage,
    testing::Values(StoredCase{"system", "system", system}, StoredCase{"english", "en", english},
                    StoredCase{"japanese", "ja", japanese},
                    StoredCase{"chinese", "zh-Hans", simplifiedChinese},
                    StoredCase{"spanish", "es", spanish},
                    StoredCase{"portuguese", "pt-BR", brazilianPortuguese},
                    StoredCase{"upperCase", "JA", system}, StoredCase{"lowerCase", "pt-br", system},
                    StoredCase{"notOffered", "fr", system}, StoredCase{"empty", "", system},
                    StoredCase{"blankBehind", "ja ", system},
                    StoredCase{"markBehind", "ja\u0301", system}),
    RowName());

TEST(SelectedLanguageWithoutValue, isSystem) {
  EXPECT_EQ(selectedLanguage(FakeSharedDefaults()), system);
}

TEST(SelectedLanguageOfAnotherSuiteOrKey, isNotLookedAt) {
  FakeSharedDefaults defaults;
  defaults.values[{"io.tolvane.Velmora", "VelmoraSelectedLanguage.v1"}] = "ja";
  defaults.values[{"group.io.tolvane.Velmora", "VelmoraSelectedLanguage"}] = "ja";
  EXPECT_EQ(selectedLanguage(defaults), system);
}

struct TagCase {
  const char* name;
  const char* tag;
  std::optional<VelmoraLanguage> language;
};

class LanguageForPreferredLanguage : public testing::TestWithParam<TagCase> {};

TEST_P(LanguageForPreferredLanguage, servesTheTagOrNot) {
  EXPECT_EQ(languageForPreferredLanguage(GetParam().tag), GetParam().language);
}

INSTANTIATE_TEST_SUITE_P(
    Tags, LanguageForPreferredLanguage,
    testing::Values(
        TagCase{"english", "en", english}, TagCase{"britishEnglish", "en-GB", english},
        TagCase{"upperCase", "EN-US", english}, TagCase{"japanese", "ja-JP", japanese},
        TagCase{"mexicanSpanish", "es-MX", spanish}, TagCase{"latinSpanish", "es-419", spanish},
        TagCase{"brazil", "pt-BR", brazilianPortuguese},
        TagCase{"brazilUnderscore", "pt_BR", brazilianPortuguese},
        TagCase{"brazilWithScript", "pt-Latn-BR", brazilianPortuguese},
        TagCase{"portugueseAlone", "pt", std::nullopt}, TagCase{"portugal", "pt-PT", std::nullopt},
        TagCase{"chinese", "zh", simplifiedChinese}, TagCase{"china", "zh-CN", simplifiedChinese},
        TagCase{"singapore", "zh-SG", simplifiedChinese}, TagCase{"taiwan", "zh-TW", std::nullopt},
        TagCase{"hongKong", "zh-HK", std::nullopt}, TagCase{"macau", "zh_MO", std::nullopt},
        TagCase{"hans", "zh-Hans", simplifiedChinese},
        TagCase{"hansUnderscores", "zh_Hans_CN", simplifiedChinese},
        TagCase{"hansInHongKong", "zh-Hans-HK", simplifiedChinese},
        TagCase{"hantInChina", "zh-Hant-CN", std::nullopt},
        TagCase{"hantInTaiwan", "zh-Hant-TW", std::nullopt},
        TagCase{"latinScript", "zh-Latn", std::nullopt},
        TagCase{"digitsAreNoScript", "zh-12ab", simplifiedChinese},
        TagCase{"digitsAndTaiwan", "zh-12ab-TW", std::nullopt},
        TagCase{"firstScriptDecides", "zh-Hant-Hans", std::nullopt},
        TagCase{"scriptBehindRegion", "zh-TW-Hans", simplifiedChinese},
        TagCase{"emptySubtags", "zh--hans", simplifiedChinese},
        TagCase{"leadingSeparator", "-en", english},
        TagCase{"kelvinSign", "zh-H\u212A", std::nullopt},
        TagCase{"markOnSeparator", "zh-\u0301TW", std::nullopt},
        TagCase{"fullWidth", "ｅｎ", std::nullopt}, TagCase{"notOffered", "fr-FR", std::nullopt},
        TagCase{"longerName", "eng", std::nullopt}, TagCase{"empty", "", std::nullopt},
        TagCase{"separatorsOnly", "-_-", std::nullopt}),
    RowName());

struct ResolutionCase {
  const char* name;
  VelmoraLanguage choice;
  std::vector<Text> preferred;
  VelmoraLanguage language;
};

class ResolvedLanguage : public testing::TestWithParam<ResolutionCase> {};

TEST_P(ResolvedLanguage, isTheChoiceOrTheFirstServedPreference) {
  EXPECT_EQ(resolvedLanguage(GetParam().choice, GetParam().preferred), GetParam().language);
}

INSTANTIATE_TEST_SUITE_P(
    Choices, ResolvedLanguage,
    testing::Values(ResolutionCase{"choiceWins", japanese, {"en-US"}, japanese},
                    ResolutionCase{"choiceNeedsNoPreference", spanish, {}, spanish},
                    ResolutionCase{"systemFollows", system, {"ja-JP"}, japanese},
                    ResolutionCase{"firstDecides", system, {"es-ES", "ja-JP"}, spanish},
                    ResolutionCase{
                        "notServedIsPassedOver", system, {"zh-Hant-TW", "pt-PT", "es-ES"}, spanish},
                    ResolutionCase{"taiwanAloneIsEnglish", system, {"zh-TW"}, english},
                    ResolutionCase{"nothingIsEnglish", system, {}, english}),
    RowName());

}  // namespace
}  // namespace velmora
