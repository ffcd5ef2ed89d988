#include "common/NearestName.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace velmora {
namespace {

TEST(NearestNames, areFoundFromTheirBeginningOrWithFewWrongLetters) {
  constexpr std::string_view names[] = {"restore", "check", "no-notify", "list", "files0-from"};
  const struct {
    std::string word;
    std::optional<std::string_view> nearest;
  } rows[] = {
      {"restore", "restore"},
      {"resotre", "restore"},
      {"restroe", "restore"},
      {"restor", "restore"},
      {"rstoer", "restore"},
      {"xrestorex", "restore"},
      {"RESTORE", std::nullopt},
      {"restxyz", std::nullopt},
      {"c", "check"},
      {"chekc", "check"},
      {"cheeck", "check"},
      {"ehcxk", std::nullopt},
      {"hcekc", std::nullopt},
      {"lst", "list"},
      {"ilst", "list"},
      {"mist", "list"},
      {"mast", std::nullopt},
      {"files-from", "files0-from"},
      {"nonotify", "no-notify"},
      {"", std::nullopt},
      {"x", std::nullopt},
      {std::string(1'000'000, 'x'), std::nullopt},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(nearestName(row.word, names), row.nearest) << row.word.substr(0, 20);
  }
  // The nearer one, also after another.
  constexpr std::string_view similar[] = {"abcdefg", "abcdexy"};
  EXPECT_EQ(nearestName("abcdexz", similar), "abcdexy");
}

}  // namespace
}  // namespace velmora
