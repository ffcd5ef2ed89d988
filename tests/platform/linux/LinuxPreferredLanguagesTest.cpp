#include "platform/linux/Environment.h"
#include "platform/linux/LinuxPreferredLanguages.h"
#include "tests/contracts/PreferredLanguagesContract.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

class LinuxLanguagesAdapter {
 public:
  const PreferredLanguages& languages() { return languages_; }

  void prefer(const std::vector<std::string>& tags) {
    std::string list;
    for (const std::string& tag : tags) {
      list += tag + ".UTF-8:";
    }
    environment_ = tags.empty()
                       ? Environment()
                       : Environment({{"LANG", tags.front() + ".UTF-8"}, {"LANGUAGE", list}});
  }

 private:
  Environment environment_;
  LinuxPreferredLanguages languages_{environment_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, PreferredLanguagesContract, LinuxLanguagesAdapter);

TEST(LanguageVariables, areConvertedToTags) {
  const struct {
    const char* name;
    Environment::Variables variables;
    std::vector<std::string> tags;
  } rows[] = {
      {"nothing", {}, {}},
      {"lang", {{"LANG", "ja_JP.UTF-8"}}, {"ja_JP"}},
      {"modifier", {{"LANG", "es_ES@euro"}}, {"es_ES"}},
      {"codesetAndModifier", {{"LANG", "ca_ES.UTF-8@valencia"}}, {"ca_ES"}},
      {"nothingButCodeset", {{"LANG", ".UTF-8"}}, {}},
      {"taiwaneseStaysAlone", {{"LANG", "zh_TW.UTF-8"}}, {"zh_TW"}},
      {"messagesBeforeLang", {{"LANG", "ja_JP"}, {"LC_MESSAGES", "es"}}, {"es"}},
      {"allBeforeMessages", {{"LC_ALL", "pt_BR"}, {"LC_MESSAGES", "es"}}, {"pt_BR"}},
      {"emptyOnesAreSkipped", {{"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LANG", "ja"}}, {"ja"}},
      {"c", {{"LANG", "C"}}, {}},
      {"posix", {{"LANG", "POSIX"}}, {}},
      {"cWithCodesetIsALocale", {{"LANG", "C.UTF-8"}}, {"C"}},
      {"cOverridesTheList", {{"LC_ALL", "C"}, {"LANGUAGE", "ja"}}, {}},
      {"listNeedsALocale", {{"LANGUAGE", "ja"}}, {}},
      {"listUnderCWithCodeset", {{"LANG", "C.UTF-8"}, {"LANGUAGE", "ja:es"}}, {"ja", "es"}},
      {"listReplacesTheLocale",
       {{"LANG", "en_US.UTF-8"}, {"LANGUAGE", "pt_PT:es_ES.UTF-8"}},
       {"pt_PT", "es_ES"}},
      {"cEndsTheList", {{"LANG", "en"}, {"LANGUAGE", "es:C:ja"}}, {"es"}},
      {"posixFirst", {{"LANG", "es"}, {"LANGUAGE", "POSIX:ja"}}, {}},
      {"emptyListIsNone", {{"LANG", "ja_JP"}, {"LANGUAGE", ""}}, {"ja_JP"}},
      {"emptyEntries", {{"LANG", "en"}, {"LANGUAGE", ":ja::@x:es:"}}, {"ja", "es"}},
      {"listOfNothing", {{"LANG", "ja_JP"}, {"LANGUAGE", ":"}}, {}},
      {"localeIsNoList", {{"LANG", "ja:es"}}, {"ja:es"}},
  };
  for (const auto& row : rows) {
    const Environment environment(row.variables);
    std::vector<std::string> tags;
    for (const Text& tag : LinuxPreferredLanguages(environment).preferredLanguages()) {
      tags.push_back(tag.utf8());
    }
    EXPECT_EQ(tags, row.tags) << row.name;
  }
}

}  // namespace
}  // namespace velmora
