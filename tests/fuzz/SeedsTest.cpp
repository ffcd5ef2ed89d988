// Tries a fuzz target on its seeds. What does not hold ends the process.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace velmora {
namespace {

std::vector<std::string> seedNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(VELMORA_FUZZ_SEEDS)) {
    names.push_back(entry.path().filename());
  }
  std::ranges::sort(names);
  return names;
}

std::string testName(const testing::TestParamInfo<std::string>& seed) {
  std::string name = seed.param;
  std::ranges::replace_if(
      name,
      [](char character) {
        return std::string_view("-.").find(character) != std::string_view::npos;
      },
      '_');
  return name;
}

class SeedsTest : public testing::TestWithParam<std::string> {};

TEST_P(SeedsTest, propertiesHold) {
  std::ifstream file(VELMORA_FUZZ_SEEDS "/" + GetParam(), std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  ASSERT_TRUE(file.is_open() && !file.bad());
  EXPECT_EQ(
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, SeedsTest, testing::ValuesIn(seedNames()), testName);

TEST(SeedsTest, areThere) { EXPECT_FALSE(seedNames().empty()); }

}  // namespace
}  // namespace velmora
