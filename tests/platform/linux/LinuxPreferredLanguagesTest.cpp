#include "platform/linux/Environment.h"
#include "platform/linux/LinuxPreferredLanguages.h"
#include "tests/support/RowName.h"
#include "tests/contracts/PreferredLanguagesContract.h"

#include <gtest/gtest.h>

#include <ostream>
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

struct LanguagesCase {
  std::string name;
  Environment::Variables variables;
  std::vector<std::string> tags;
};

std::ostream& operator<<(std::ostream& out, const LanguagesCase& row) { return out << row.name; }

class LanguageVariables : public testing::TestWithParam<LanguagesCase> {};

TEST_P(LanguageVariables, giveTheseTags) {
  const Environment environment(GetParam().variables);
  std::vector<std::string> tags;
  for (const Text& tag : LinuxPreferredLanguages(environment).preferredLanguages()) {
    tags.push_back(tag.utf8());
  }
  EXPECT_EQ(tags, GetParam().tags);
}

INSTANTIATE_TEST_SUITE_P(
    Table, LanguageVariables,
    testing::Values(
        LanguagesCase{"nothing", {}, {}},
        LanguagesCase{"lang", {{"LANG", "ja_JP.UTF-8"}}, {"ja_JP"}},
        LanguagesCase{"modifier", {{"LANG", "es_ES@euro"}}, {"es_ES"}},
        LanguagesCase{"codesetAndModifier", {{"LANG", "ca_ES.UTF-8@valencia"}}, {"ca_ES"}},
        LanguagesCase{"nothingButCodeset", {{"LANG", ".UTF-8"}}, {}},
        LanguagesCase{"taiwaneseStaysAlone", {{"LANG", "zh_TW.UTF-8"}}, {"zh_TW"}},
        LanguagesCase{"messagesBeforeLang", {{"LANG", "ja_JP"}, {"LC_MESSAGES", "es"}}, {"es"}},
        LanguagesCase{"allBeforeMessages", {{"LC_ALL", "pt_BR"}, {"LC_MESSAGES", "es"}}, {"pt_BR"}},
        LanguagesCase{
            "emptyOnesAreSkipped", {{"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LANG", "ja"}}, {"ja"}},
        LanguagesCase{"c", {{"LANG", "C"}}, {}}, LanguagesCase{"posix", {{"LANG", "POSIX"}}, {}},
        LanguagesCase{"cWithCodesetIsALocale", {{"LANG", "C.UTF-8"}}, {"C"}},
        LanguagesCase{"cOverridesTheList", {{"LC_ALL", "C"}, {"LANGUAGE", "ja"}}, {}},
        LanguagesCase{"listNeedsALocale", {{"LANGUAGE", "ja"}}, {}},
        LanguagesCase{
            "listUnderCWithCodeset", {{"LANG", "C.UTF-8"}, {"LANGUAGE", "ja:es"}}, {"ja", "es"}},
        LanguagesCase{"listReplacesTheLocale",
                      {{"LANG", "en_US.UTF-8"}, {"LANGUAGE", "pt_PT:es_ES.UTF-8"}},
                      {"pt_PT", "es_ES"}},
        LanguagesCase{"cEndsTheList", {{"LANG", "en"}, {"LANGUAGE", "es:C:ja"}}, {"es"}},
        LanguagesCase{"posixFirst", {{"LANG", "es"}, {"LANGUAGE", "POSIX:ja"}}, {}},
        LanguagesCase{"emptyListIsNone", {{"LANG", "ja_JP"}, {"LANGUAGE", ""}}, {"ja_JP"}},
        LanguagesCase{"emptyEntries", {{"LANG", "en"}, {"LANGUAGE", ":ja::@x:es:"}}, {"ja", "es"}},
        LanguagesCase{"listOfNothing", {{"LANG", "ja_JP"}, {"LANGUAGE", ":"}}, {}},
        LanguagesCase{"localeIsNoList", {{"LANG", "ja:es"}}, {"ja:es"}}),
    RowName());

}  // namespace
}  // namespace velmora
