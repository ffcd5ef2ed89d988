#include "localization/VelmoraLanguage.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

TEST(SelectedLanguage, isTheStoredRawValueOrSystem) {
  const std::pair<const char*, VelmoraLanguage> rows[] = {
      {"system", system}, {"en", english},
      {"ja", japanese},   {"zh-Hans", simplifiedChinese},
      {"es", spanish},    {"pt-BR", brazilianPortuguese},
      {"JA", system},     {"pt-br", system},
      {"fr", system},     {"", system},
      {"ja ", system},    {"ja\u0301", system}};
  for (const auto& [stored, language] : rows) {
    FakeSharedDefaults defaults;
    defaults.values[{"group.io.tolvane.Velmora", "VelmoraSelectedLanguage.v1"}] = stored;
    EXPECT_EQ(selectedLanguage(defaults), language) << stored;
  }
}

TEST(SelectedLanguage, isSystemWithoutAValueUnderSuiteAndKey) {
  FakeSharedDefaults defaults;
  EXPECT_EQ(selectedLanguage(defaults), system);
  defaults.values[{"io.tolvane.Velmora", "VelmoraSelectedLanguage.v1"}] = "ja";
  defaults.values[{"group.io.tolvane.Velmora", "VelmoraSelectedLanguage"}] = "ja";
  EXPECT_EQ(selectedLanguage(defaults), system);
}

TEST(LanguageForPreferredLanguage, isTheSupportedLanguageOfTheTag) {
  const std::pair<std::optional<VelmoraLanguage>, std::vector<std::string>> rows[] = {
      {english, {"en", "en-GB", "EN-US", "-en"}},
      {japanese, {"ja-JP"}},
      {spanish, {"es-MX", "es-419"}},
      {brazilianPortuguese, {"pt-BR", "pt_BR", "pt-Latn-BR"}},
      {simplifiedChinese,
       {"zh", "zh-CN", "zh-SG", "zh-Hans", "zh_Hans_CN", "zh-Hans-HK", "zh-12ab", "zh-TW-Hans",
        "zh--hans", "zh-han", "zh-hantx", "zh-han`", "zh-han{"}},
      {std::nullopt,
       {"pt", "pt-PT", "zh-TW", "zh-HK", "zh_MO", "zh-Hant-CN", "zh-Hant-TW", "zh-Latn",
        "zh-12ab-TW", "zh-Hanz", "zh-Aaaa", "zh-Hant-Hans", "zh-H\u212A", "zh-\u0301TW", "ｅｎ",
        "fr-FR", "eng", "", "-_-"}}};
  for (const auto& [language, tags] : rows) {
    for (const std::string& tag : tags) {
      EXPECT_EQ(languageForPreferredLanguage(tag), language) << tag;
    }
  }
}

TEST(ResolvedLanguage, isTheChoiceOrTheFirstSupportedPreference) {
  struct Row {
    const char* name;
    VelmoraLanguage choice;
    std::vector<Text> preferred;
    VelmoraLanguage language;
  };
  const Row rows[] = {{"choiceWins", japanese, {"en-US"}, japanese},
                      {"choiceNeedsNoPreference", spanish, {}, spanish},
                      {"systemFollows", system, {"ja-JP"}, japanese},
                      {"firstDecides", system, {"es-ES", "ja-JP"}, spanish},
                      {"unsupportedIsSkipped", system, {"zh-Hant-TW", "pt-PT", "es-ES"}, spanish},
                      {"taiwanAloneIsEnglish", system, {"zh-TW"}, english},
                      {"nothingIsEnglish", system, {}, english}};
  for (const Row& row : rows) {
    EXPECT_EQ(resolvedLanguage(row.choice, row.preferred), row.language) << row.name;
  }
}

}  // namespace
}  // namespace velmora
