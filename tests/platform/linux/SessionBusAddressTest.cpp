#include "platform/linux/Environment.h"
#include "platform/linux/SessionBusAddress.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

using std::string_literals::operator""s;

using Sockets = std::vector<std::string>;

TEST(SessionBusAddress, namesLocalSockets) {
  const struct {
    std::string variable;
    Sockets sockets;
  } rows[] = {
      {"unix:path=/a", {"/a"}},
      {"unix:path=/a,guid=0123", {"/a"}},
      {"unix:guid=0123,path=/a", {"/a"}},
      {"unix:path=/a%2cb%3Bc%20d%25", {"/a,b;c d%"}},
      {"unix:path=/a b=c", {"/a b=c"}},
      {"unix:abstract=/a", {"\0/a"s}},
      {"unix:path=/a;unix:abstract=b;unix:path=/c", {"/a", "\0b"s, "/c"}},
      {"tcp:host=b,port=1;unix:path=/a;nonce-tcp:host=b,port=1,noncefile=/c", {"/a"}},
      {"autolaunch:;unix:path=/a;disabled:", {"/a"}},
      {"autolaunch:scope=x", {}},
      {";unix:path=/a;;", {"/a"}},
      {";;", {}},
      {"unix:", {}},
      {"unix:path", {}},
      {"unix:path=", {}},
      {"unix:path=/a%", {}},
      {"unix:path=/a%2", {}},
      {"unix:path=/a%2x", {}},
      {"unix:dir=/a", {}},
      {"Unix:path=/a", {}},
      {"/a", {}},
  };
  for (const auto& row : rows) {
    const Environment environment({{"DBUS_SESSION_BUS_ADDRESS", row.variable}});
    EXPECT_EQ(sessionBusSockets(environment), row.sockets) << row.variable;
  }
}

TEST(SessionBusAddress, isInTheRuntimeDirectoryWithoutTheVariable) {
  const struct {
    Environment::Variables variables;
    Sockets sockets;
  } rows[] = {
      {{}, {}},
      {{{"XDG_RUNTIME_DIR", "/run/a,b;c"}}, {"/run/a,b;c/bus"}},
      {{{"XDG_RUNTIME_DIR", "relative"}}, {}},
      {{{"XDG_RUNTIME_DIR", "/run"}, {"DBUS_SESSION_BUS_ADDRESS", ""}}, {"/run/bus"}},
      {{{"XDG_RUNTIME_DIR", "/run"}, {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/a"}}, {"/a"}},
      {{{"XDG_RUNTIME_DIR", "/run"}, {"DBUS_SESSION_BUS_ADDRESS", "disabled:"}}, {}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(sessionBusSockets(Environment(row.variables)), row.sockets);
  }
}

}  // namespace
}  // namespace velmora
