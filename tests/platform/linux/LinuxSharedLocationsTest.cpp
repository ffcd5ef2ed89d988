#include "platform/linux/Environment.h"
#include "platform/linux/LinuxSharedLocations.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/contracts/SharedLocationsContract.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace velmora {
namespace {

std::optional<std::string> nowhere() { return std::nullopt; }

/// A user who has no home until something is provided.
class LinuxLocationsAdapter {
 public:
  const SharedLocations& locations() { return locations_; }

  std::string joinGroup(std::string_view group) {
    std::string container = provideSupportDirectories().front() + "/" + std::string(group);
    std::filesystem::create_directories(container);
    return container;
  }

  std::vector<std::string> provideSupportDirectories() {
    environment_ = Environment({{"XDG_DATA_HOME", directory_.path("data")}});
    return {directory_.path("data")};
  }

 private:
  ScratchDirectory directory_;
  PosixFileReader files_;
  Environment environment_;
  LinuxSharedLocations locations_{environment_, files_, nowhere};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, SharedLocationsContract, LinuxLocationsAdapter);

class LinuxSharedLocationsTest : public testing::Test {
 protected:
  std::optional<Text> container(const Environment::Variables& variables) {
    const Environment environment(variables);
    return LinuxSharedLocations(environment, files, nowhere).groupContainer("group.org.example");
  }

  ScratchDirectory directory;
  PosixFileReader files;
};

TEST_F(LinuxSharedLocationsTest, takesAnotherContainerFromTheEnvironmentThoughItNeedNotExist) {
  std::filesystem::create_directory(directory.path("group.org.example"));
  EXPECT_EQ(container({{"VELMORA_GROUP_CONTAINER", "/does/not/exist"},
                       {"XDG_DATA_HOME", directory.path()}}),
            Text("/does/not/exist"));
}

TEST_F(LinuxSharedLocationsTest, ignoresARelativeContainerInTheEnvironment) {
  std::filesystem::create_directory(directory.path("group.org.example"));
  EXPECT_EQ(
      container({{"VELMORA_GROUP_CONTAINER", "relative"}, {"XDG_DATA_HOME", directory.path()}}),
      Text(directory.path("group.org.example")));
}

TEST_F(LinuxSharedLocationsTest, takesNoFileForAContainer) {
  directory.write("group.org.example", "");
  EXPECT_EQ(container({{"XDG_DATA_HOME", directory.path()}}), std::nullopt);
}

TEST_F(LinuxSharedLocationsTest, takesALinkToADirectoryForAContainer) {
  std::filesystem::create_directory(directory.path("elsewhere"));
  std::filesystem::create_directory_symlink(directory.path("elsewhere"),
                                            directory.path("group.org.example"));
  EXPECT_EQ(container({{"XDG_DATA_HOME", directory.path()}}),
            Text(directory.path("group.org.example")));
}

TEST_F(LinuxSharedLocationsTest, hasNoContainerWithoutADataHome) {
  EXPECT_EQ(container({}), std::nullopt);
}

}  // namespace
}  // namespace velmora
