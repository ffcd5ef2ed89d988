// What every IdentifierSource promises. Instantiated with the sources themselves.
#pragma once

#include "platform/IdentifierSource.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace velmora {

inline bool isUpperCaseUUIDOfVersion4(std::string_view text) {
  constexpr std::string_view form = "XXXXXXXX-XXXX-4XXX-YXXX-XXXXXXXXXXXX";
  if (text.size() != form.size()) {
    return false;
  }
  for (std::size_t index = 0; index < form.size(); ++index) {
    const std::string_view allowed = form[index] == 'X'   ? "0123456789ABCDEF"
                                     : form[index] == 'Y' ? "89AB"
                                                          : form.substr(index, 1);
    if (allowed.find(text[index]) == std::string_view::npos) {
      return false;
    }
  }
  return true;
}

template <class Source>
class IdentifierSourceContract : public testing::Test {
 protected:
  Source source;
};

TYPED_TEST_SUITE_P(IdentifierSourceContract);

TYPED_TEST_P(IdentifierSourceContract, makesUpperCaseUUIDsThatDiffer) {
  std::set<std::string> seen;
  for (int round = 0; round < 1000; ++round) {
    const std::string uuid = this->source.uuid();
    EXPECT_TRUE(isUpperCaseUUIDOfVersion4(uuid)) << uuid;
    seen.insert(uuid);
  }
  EXPECT_EQ(seen.size(), 1000U);
}

REGISTER_TYPED_TEST_SUITE_P(IdentifierSourceContract, makesUpperCaseUUIDsThatDiffer);

}  // namespace velmora
