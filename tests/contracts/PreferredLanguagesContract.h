// What every PreferredLanguages promises. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/PreferredLanguages.h"

#include <gtest/gtest.h>

#include <concepts>
#include <string>
#include <vector>

namespace velmora {

template <class Adapter>
concept PreferredLanguagesAdapter = std::default_initializable<Adapter> &&
    requires(Adapter& adapter, const std::vector<std::string>& tags) {
  { adapter.languages() } -> std::convertible_to<const PreferredLanguages&>;
  // Makes these, in the platform's spelling, the languages that the user prefers.
  adapter.prefer(tags);
};

template <class Adapter>
class PreferredLanguagesContract : public testing::Test {
  static_assert(PreferredLanguagesAdapter<Adapter>);

 protected:
  std::vector<std::string> preferred() {
    std::vector<std::string> tags;
    for (const Text& tag : adapter.languages().preferredLanguages()) {
      tags.push_back(tag.utf8());
    }
    return tags;
  }

  Adapter adapter;
};

TYPED_TEST_SUITE_P(PreferredLanguagesContract);

TYPED_TEST_P(PreferredLanguagesContract, mayKnowOfNoPreference) {
  this->adapter.prefer({});
  EXPECT_EQ(this->preferred(), std::vector<std::string>());
}

TYPED_TEST_P(PreferredLanguagesContract, keepsTheOrderAndTheSpelling) {
  const std::vector<std::string> tags = {"zh_TW", "pt_PT", "es_ES", "en"};
  this->adapter.prefer(tags);
  EXPECT_EQ(this->preferred(), tags);
}

TYPED_TEST_P(PreferredLanguagesContract, addsNoLanguageOfItsOwn) {
  this->adapter.prefer({"zh_TW"});
  EXPECT_EQ(this->preferred(), std::vector<std::string>{"zh_TW"});
}

TYPED_TEST_P(PreferredLanguagesContract, asksAfreshAtEveryCall) {
  this->adapter.prefer({"ja"});
  EXPECT_EQ(this->preferred(), std::vector<std::string>{"ja"});
  this->adapter.prefer({"es"});
  EXPECT_EQ(this->preferred(), std::vector<std::string>{"es"});
}

REGISTER_TYPED_TEST_SUITE_P(PreferredLanguagesContract, mayKnowOfNoPreference,
                            keepsTheOrderAndTheSpelling, addsNoLanguageOfItsOwn,
                            asksAfreshAtEveryCall);

}  // namespace velmora
