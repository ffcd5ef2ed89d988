#include "platform/linux/Environment.h"
#include "platform/linux/SessionBusAddress.h"
#include "tests/support/RowName.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/platform/linux/Buses.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>

namespace velmora {
namespace {

struct AddressCase {
  std::string name;
  std::string variable;
  std::optional<std::string> address;
};

std::ostream& operator<<(std::ostream& out, const AddressCase& row) { return out << row.name; }

class AddressVariable : public testing::TestWithParam<AddressCase> {};

TEST_P(AddressVariable, leadsToARunningBusOnly) {
  const Environment environment({{"DBUS_SESSION_BUS_ADDRESS", GetParam().variable}});
  EXPECT_EQ(sessionBusAddress(environment), GetParam().address);
}

INSTANTIATE_TEST_SUITE_P(
    Table, AddressVariable,
    testing::Values(AddressCase{"path", "unix:path=/a", "unix:path=/a"},
                    AddressCase{"alternatives", "unix:path=/a;tcp:host=b,port=1",
                                "unix:path=/a;tcp:host=b,port=1"},
                    AddressCase{"autolaunch", "autolaunch:", std::nullopt},
                    AddressCase{"autolaunchWithScope", "autolaunch:scope=x", std::nullopt},
                    AddressCase{"disabled", "disabled:", std::nullopt},
                    AddressCase{"autolaunchLast", "unix:path=/a;autolaunch:", "unix:path=/a"},
                    AddressCase{"autolaunchFirst", "autolaunch:;unix:path=/a", "unix:path=/a"},
                    AddressCase{"onlyEmptyAlternatives", ";;", std::nullopt}),
    RowName());

/// The address for $XDG_RUNTIME_DIR alone.
std::optional<std::string> addressIn(const std::string& runtimeDirectory) {
  return sessionBusAddress(Environment({{"XDG_RUNTIME_DIR", runtimeDirectory}}));
}

TEST(SessionBusAddress, isNoneWhereNothingIsKnown) {
  EXPECT_EQ(sessionBusAddress(Environment()), std::nullopt);
}

TEST(SessionBusAddress, isTheSocketInTheRuntimeDirectory) {
  const DeafBus bus;
  const std::string directory = std::filesystem::path(bus.path()).parent_path();
  EXPECT_EQ(addressIn(directory), bus.address());
}

TEST(SessionBusAddress, prefersTheVariable) {
  const DeafBus bus;
  const std::string directory = std::filesystem::path(bus.path()).parent_path();
  const auto address = [&directory](const std::string& variable) {
    return sessionBusAddress(
        Environment({{"DBUS_SESSION_BUS_ADDRESS", variable}, {"XDG_RUNTIME_DIR", directory}}));
  };
  EXPECT_EQ(address("unix:path=/a"), "unix:path=/a");
  EXPECT_EQ(address("disabled:"), std::nullopt);
  EXPECT_EQ(address(""), bus.address());
}

TEST(SessionBusAddress, escapesTheRuntimeDirectory) {
  const DeafBus bus;
  const ScratchDirectory directory;
  const std::string runtimeDirectory = directory.path("a,b;c");
  std::filesystem::create_directory(runtimeDirectory);
  std::filesystem::create_symlink(bus.path(), runtimeDirectory + "/bus");
  EXPECT_EQ(addressIn(runtimeDirectory), "unix:path=" + directory.path("a%2Cb%3Bc/bus"));
}

TEST(SessionBusAddress, isNoneWithoutASocketInTheRuntimeDirectory) {
  const ScratchDirectory directory;
  EXPECT_EQ(addressIn(directory.path()), std::nullopt);
  directory.write("bus", "");
  EXPECT_EQ(addressIn(directory.path()), std::nullopt);
  EXPECT_EQ(addressIn("relative"), std::nullopt);
}

}  // namespace
}  // namespace velmora
