#include "EnumTable.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>

namespace velmora::inspect {
namespace {

enum class Season { spring, autumn };

struct SeasonName {
  std::optional<Season> value;
  std::string_view name;
};

constexpr SeasonName seasonNames[] = {
    {Season::autumn, "autumn"}, {std::nullopt, "none"}, {Season::spring, "spring"}};

TEST(EnumTables, findARowByItsValueInAnyOrder) {
  EXPECT_EQ(rowFor(seasonNames, Season::spring).name, "spring");
  EXPECT_EQ(rowFor(seasonNames, Season::autumn).name, "autumn");
  EXPECT_EQ(rowFor(seasonNames, std::optional<Season>()).name, "none");
}

}  // namespace
}  // namespace velmora::inspect
