// The contract of every PreferredLanguages. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/PreferredLanguages.h"
#include "tests/support/Bytes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {

/// An adapter has
///   const PreferredLanguages& languages();
///   void prefer(const std::vector<std::string>& tags);
///       makes these the user's preferred languages; the tags have the platform's spelling
template <class Adapter>
class PreferredLanguagesContract : public testing::Test {};

TYPED_TEST_SUITE_P(PreferredLanguagesContract);

TYPED_TEST_P(PreferredLanguagesContract, areTheCurrentTagsOfTheUserInOrder) {
  using Tags = std::vector<std::string>;
  TypeParam adapter;
  for (const Tags& tags : {Tags(), Tags{"zh_TW", "pt_PT", "es_ES", "en"}, Tags{"zh_TW"}, Tags{"ja"},
                           Tags{"es"}, Tags()}) {
    adapter.prefer(tags);
    EXPECT_EQ(bytesOf(adapter.languages().preferredLanguages()), tags);
  }
}

REGISTER_TYPED_TEST_SUITE_P(PreferredLanguagesContract, areTheCurrentTagsOfTheUserInOrder);

}  // namespace velmora
