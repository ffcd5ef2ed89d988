#include "platform/linux/Environment.h"
#include "platform/linux/SessionBusAddress.h"
#include "tests/support/Buses.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

namespace velmora {
namespace {

TEST(SessionBusAddress, excludesAddressesThatStartABus) {
  const struct {
    std::string variable;
    std::optional<std::string> address;
  } rows[] = {
      {"unix:path=/a", "unix:path=/a"},
      {"unix:path=/a;tcp:host=b,port=1", "unix:path=/a;tcp:host=b,port=1"},
      {"autolaunch:", std::nullopt},
      {"autolaunch:scope=x", std::nullopt},
      {"disabled:", std::nullopt},
      {"unix:path=/a;autolaunch:", "unix:path=/a"},
      {"autolaunch:;unix:path=/a", "unix:path=/a"},
      {";;", std::nullopt},
  };
  for (const auto& row : rows) {
    const Environment environment({{"DBUS_SESSION_BUS_ADDRESS", row.variable}});
    EXPECT_EQ(sessionBusAddress(environment), row.address) << row.variable;
  }
  EXPECT_EQ(sessionBusAddress(Environment()), std::nullopt);
}

/// The address when only XDG_RUNTIME_DIR is set.
std::optional<std::string> addressIn(const std::string& runtimeDirectory) {
  return sessionBusAddress(Environment({{"XDG_RUNTIME_DIR", runtimeDirectory}}));
}

TEST(SessionBusAddress, isTheSocketInTheRuntimeDirectory) {
  const BrokenBus bus(BusFault::letsNobodyIn);
  EXPECT_EQ(addressIn(bus.directory()), bus.address());
  const auto address = [&bus](const std::string& variable) {
    return sessionBusAddress(Environment(
        {{"DBUS_SESSION_BUS_ADDRESS", variable}, {"XDG_RUNTIME_DIR", bus.directory()}}));
  };
  EXPECT_EQ(address("unix:path=/a"), "unix:path=/a");
  EXPECT_EQ(address("disabled:"), std::nullopt);
  EXPECT_EQ(address(""), bus.address());
}

TEST(SessionBusAddress, escapesTheRuntimeDirectory) {
  const BrokenBus bus(BusFault::letsNobodyIn);
  const ScratchDirectory directory;
  const std::string runtimeDirectory = directory.path("a,b;c");
  std::filesystem::create_directory_symlink(bus.directory(), runtimeDirectory);
  EXPECT_EQ(addressIn(runtimeDirectory), "unix:path=" + directory.path("a%2Cb%3Bc/bus"));
}

TEST(SessionBusAddress, isAbsentWithoutASocketInTheRuntimeDirectory) {
  const ScratchDirectory directory;
  EXPECT_EQ(addressIn(directory.path()), std::nullopt);
  directory.write("bus", "");
  EXPECT_EQ(addressIn(directory.path()), std::nullopt);
  EXPECT_EQ(addressIn("relative"), std::nullopt);
}

}  // namespace
}  // namespace velmora
