#include "platform/linux/Environment.h"
#include "platform/linux/LinuxSharedLocations.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/contracts/SharedLocationsContract.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace velmora {
namespace {

std::optional<std::string> nowhere() { return std::nullopt; }

/// A user without a home, until the test provides directories.
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

TEST(LinuxSharedLocationsTest, findsTheContainerOfTheEnvironmentOrOfTheDataHome) {
  const ScratchDirectory directory;
  const PosixFileReader files;
  const auto container = [&](const Environment::Variables& variables) {
    const Environment environment(variables);
    return LinuxSharedLocations(environment, files, nowhere).groupContainer("group.org.example");
  };
  const std::string dataHome = directory.path();
  const std::string group = directory.path("group.org.example");
  EXPECT_EQ(container({}), std::nullopt);
  // A file is no container.
  directory.write("group.org.example", "");
  EXPECT_EQ(container({{"XDG_DATA_HOME", dataHome}}), std::nullopt);
  // A link to a directory is a container.
  std::filesystem::remove(group);
  std::filesystem::create_directory(directory.path("elsewhere"));
  std::filesystem::create_directory_symlink(directory.path("elsewhere"), group);
  EXPECT_EQ(container({{"XDG_DATA_HOME", dataHome}}), Text(group));
  // The container of the environment need not exist, but its path must be absolute.
  EXPECT_EQ(container({{"VELMORA_GROUP_CONTAINER", "/none"}, {"XDG_DATA_HOME", dataHome}}),
            Text("/none"));
  EXPECT_EQ(container({{"VELMORA_GROUP_CONTAINER", "relative"}, {"XDG_DATA_HOME", dataHome}}),
            Text(group));
}

TEST(LinuxSharedLocationsTest, namesTheContainerInTheDataHomeAlsoIfItIsMissing) {
  const PosixFileReader files;
  const Environment environment({{"VELMORA_GROUP_CONTAINER", "/none"}, {"XDG_DATA_HOME", "/data"}});
  EXPECT_EQ(LinuxSharedLocations(environment, files, nowhere).groupContainerInDataHome("group"),
            Text("/data/group"));
  EXPECT_EQ(LinuxSharedLocations(Environment(), files, nowhere).groupContainerInDataHome("group"),
            std::nullopt);
}

TEST(LinuxSharedLocationsTest, recognisesTheContainerOfTheEnvironment) {
  const ScratchDirectory directory;
  const PosixFileReader files;
  std::filesystem::create_directory(directory.path("group.org.example"));
  const auto container = [&](const Environment::Variables& variables) {
    const Environment environment(variables);
    return LinuxSharedLocations(environment, files, nowhere).groupContainerOfEnvironment();
  };
  EXPECT_EQ(container({{"VELMORA_GROUP_CONTAINER", "/none"}}), Text("/none"));
  EXPECT_EQ(container({{"VELMORA_GROUP_CONTAINER", "relative"}}), std::nullopt);
  // The container in the data home does not count as one of the environment.
  EXPECT_EQ(container({{"XDG_DATA_HOME", directory.path()}}), std::nullopt);
}

}  // namespace
}  // namespace velmora
