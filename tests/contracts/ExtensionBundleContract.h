// What every ExtensionBundle promises. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/ExtensionBundle.h"

#include <gtest/gtest.h>

#include <concepts>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

template <class Adapter>
concept ExtensionBundleAdapter = std::default_initializable<Adapter> &&
    requires(Adapter& adapter, std::string_view language,
             const std::optional<std::string>& identifier,
             const std::map<std::string, std::string>& texts) {
  { adapter.bundle() } -> std::convertible_to<const ExtensionBundle&>;
  // The identifier under which the program runs. None at the beginning.
  adapter.identifyAs(identifier);
  // Makes these the texts of a language.
  adapter.localize(language, texts);
  // Gives a language a folder whose table cannot be used.
  adapter.localizeUnusably(language);
};

template <class Adapter>
class ExtensionBundleContract : public testing::Test {
  static_assert(ExtensionBundleAdapter<Adapter>);

 protected:
  /// The text under `key`, with "fallback" in a folder's absent texts' place; none without a
  /// folder.
  std::optional<std::string> text(std::string_view language, std::string_view key) {
    const std::unique_ptr<LocalizationFolder> folder =
        adapter.bundle().localizationFolder(language);
    if (!folder) {
      return std::nullopt;
    }
    return folder->localizedString(key, "fallback");
  }

  Adapter adapter;
};

TYPED_TEST_SUITE_P(ExtensionBundleContract);

TYPED_TEST_P(ExtensionBundleContract, mayHaveNoIdentifier) {
  EXPECT_EQ(this->adapter.bundle().bundleIdentifier(), std::nullopt);
}

TYPED_TEST_P(ExtensionBundleContract, tellsTheIdentifierUnderWhichItRuns) {
  this->adapter.identifyAs("org.example.Action");
  EXPECT_EQ(this->adapter.bundle().bundleIdentifier(), Text("org.example.Action"));
}

TYPED_TEST_P(ExtensionBundleContract, hasNoFolderOfALanguageWithoutOne) {
  this->adapter.localize("pt-BR", {{"key", "texto"}});
  EXPECT_EQ(this->text("ja", "key"), std::nullopt);
  EXPECT_EQ(this->text("pt", "key"), std::nullopt);
}

TYPED_TEST_P(ExtensionBundleContract, findsTheTextsOfEachLanguage) {
  this->adapter.localize("ja", {{"key", "復元"}, {"other.key", "「\"\\」\n"}});
  this->adapter.localize("es", {{"key", "Restaurar"}});
  EXPECT_EQ(this->text("ja", "key"), "復元");
  EXPECT_EQ(this->text("ja", "other.key"), "「\"\\」\n");
  EXPECT_EQ(this->text("es", "key"), "Restaurar");
  EXPECT_EQ(this->text("es", "other.key"), "fallback");
}

TYPED_TEST_P(ExtensionBundleContract, keepsAnEmptyText) {
  this->adapter.localize("ja", {{"key", ""}});
  EXPECT_EQ(this->text("ja", "key"), "");
}

TYPED_TEST_P(ExtensionBundleContract, fallsBackWhenTheTableCannotBeUsed) {
  this->adapter.localizeUnusably("ja");
  EXPECT_EQ(this->text("ja", "key"), "fallback");
}

REGISTER_TYPED_TEST_SUITE_P(ExtensionBundleContract, mayHaveNoIdentifier,
                            tellsTheIdentifierUnderWhichItRuns, hasNoFolderOfALanguageWithoutOne,
                            findsTheTextsOfEachLanguage, keepsAnEmptyText,
                            fallsBackWhenTheTableCannotBeUsed);

}  // namespace velmora
