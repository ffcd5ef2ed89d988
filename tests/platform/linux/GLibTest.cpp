#include "platform/linux/GLib.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

// This program is also linked with the libraries, so it can compare the addresses.

TEST(GLibTest, isTheLibraryOfTheProcess) {
  EXPECT_EQ(glib().g_free, &::g_free);
  EXPECT_EQ(glib().g_dbus_is_name, &::g_dbus_is_name);
}

}  // namespace
}  // namespace velmora
