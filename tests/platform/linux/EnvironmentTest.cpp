#include "platform/linux/Environment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace velmora {
namespace {

TEST(Environment, tellsEmptyFromUnset) {
  const Environment environment({{"EMPTY", ""}, {"SET", "a=b"}});
  EXPECT_EQ(environment.variable("EMPTY"), "");
  EXPECT_EQ(environment.variable("SET"), "a=b");
  EXPECT_EQ(environment.variable("UNSET"), std::nullopt);
  EXPECT_EQ(environment.variable("SE"), std::nullopt);
}

TEST(Environment, takesOnlyAbsolutePathsForPaths) {
  const Environment environment({{"ABSOLUTE", "/a"}, {"RELATIVE", "a/b"}, {"EMPTY", ""}});
  EXPECT_EQ(environment.absolutePath("ABSOLUTE"), "/a");
  EXPECT_EQ(environment.absolutePath("RELATIVE"), std::nullopt);
  EXPECT_EQ(environment.absolutePath("EMPTY"), std::nullopt);
  EXPECT_EQ(environment.absolutePath("UNSET"), std::nullopt);
}

TEST(Environment, isCapturedOnce) {
  setenv("VELMORA_TEST_VARIABLE", "before=1", 1);
  const Environment environment = captureEnvironment();
  setenv("VELMORA_TEST_VARIABLE", "after", 1);
  EXPECT_EQ(environment.variable("VELMORA_TEST_VARIABLE"), "before=1");
}

TEST(Environment, keepsTheBusThatIsHiddenFromLibraries) {
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/somewhere", 1);
  const Environment environment = captureEnvironment();
  detachSessionBusFromLibraries();
  EXPECT_EQ(environment.variable(sessionBusAddressVariable), "unix:path=/somewhere");
  EXPECT_STREQ(std::getenv("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
}

}  // namespace
}  // namespace velmora
