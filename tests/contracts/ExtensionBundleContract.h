// The contract of every ExtensionBundle. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/ExtensionBundle.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace velmora {

/// An adapter has
///   const ExtensionBundle& bundle();
///   void identifyAs(const std::optional<std::string>&);
///       sets the identifier of the running program, which has none at first
///   void localize(std::string_view language, const std::map<std::string, std::string>&);
///       makes these the texts of a language
///   void localizeUnusably(std::string_view language);
///       gives a language a folder whose table cannot be used
template <class Adapter>
class ExtensionBundleContract : public testing::Test {};

TYPED_TEST_SUITE_P(ExtensionBundleContract);

TYPED_TEST_P(ExtensionBundleContract, hasTheIdentifierOfTheRunningProgram) {
  TypeParam adapter;
  EXPECT_EQ(adapter.bundle().bundleIdentifier(), std::nullopt);
  adapter.identifyAs("org.example.Action");
  EXPECT_EQ(adapter.bundle().bundleIdentifier(), Text("org.example.Action"));
}

TYPED_TEST_P(ExtensionBundleContract, findsTheTextsOfEachLanguage) {
  TypeParam adapter;
  adapter.localize("ja", {{"key", "復元"}, {"other.key", "「\"\\」\n"}, {"empty.key", ""}});
  adapter.localize("es", {{"key", "Restaurar"}});
  adapter.localize("pt-BR", {{"key", "texto"}});
  adapter.localizeUnusably("fr");
  struct Row {
    const char* language;
    const char* key;
    /// std::nullopt when the language has no folder.
    std::optional<std::string> text;
  };
  const Row rows[] = {{"ja", "key", "復元"},           {"ja", "other.key", "「\"\\」\n"},
                      {"ja", "empty.key", ""},         {"es", "key", "Restaurar"},
                      {"es", "other.key", "absent"},   {"pt-BR", "key", "texto"},
                      {"fr", "key", "absent"},         {"pt", "key", std::nullopt},
                      {"zh-Hans", "key", std::nullopt}};
  for (const Row& row : rows) {
    const std::unique_ptr<LocalizationFolder> folder =
        adapter.bundle().localizationFolder(row.language);
    EXPECT_EQ(folder ? std::optional(folder->localizedString(row.key, "absent")) : std::nullopt,
              row.text)
        << row.language << ", " << row.key;
  }
}

REGISTER_TYPED_TEST_SUITE_P(ExtensionBundleContract, hasTheIdentifierOfTheRunningProgram,
                            findsTheTextsOfEachLanguage);

}  // namespace velmora
