// The contract of every IdentifierSource. Instantiated with the implementations themselves.
#pragma once

#include "platform/IdentifierSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace velmora {

template <class Source>
class IdentifierSourceContract : public testing::Test {};

TYPED_TEST_SUITE_P(IdentifierSourceContract);

TYPED_TEST_P(IdentifierSourceContract, returnsDifferentUpperCaseUUIDsOfVersion4) {
  constexpr std::string_view form = "XXXXXXXX-XXXX-4XXX-YXXX-XXXXXXXXXXXX";
  TypeParam source;
  std::set<std::string> seen;
  for (int round = 0; round < 1000; ++round) {
    const std::string uuid = source.uuid();
    EXPECT_EQ(uuid.size(), form.size());
    for (std::size_t index = 0; index < std::min(uuid.size(), form.size()); ++index) {
      const std::string_view allowed = form[index] == 'X'   ? "0123456789ABCDEF"
                                       : form[index] == 'Y' ? "89AB"
                                                            : form.substr(index, 1);
      EXPECT_TRUE(allowed.find(uuid[index]) != std::string_view::npos) << uuid;
    }
    seen.insert(uuid);
  }
  EXPECT_EQ(seen.size(), 1000U);
}

REGISTER_TYPED_TEST_SUITE_P(IdentifierSourceContract, returnsDifferentUpperCaseUUIDsOfVersion4);

}  // namespace velmora
