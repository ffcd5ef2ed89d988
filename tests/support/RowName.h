// Names the rows of a table of cases in the names of its tests.
#pragma once

#include <gtest/gtest.h>

#include <string>

namespace velmora {

/// For INSTANTIATE_TEST_SUITE_P over rows with a member `name`.
struct RowName {
  template <class Row>
  std::string operator()(const testing::TestParamInfo<Row>& row) const {
    return row.param.name;
  }
};

}  // namespace velmora
