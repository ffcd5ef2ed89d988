#include "platform/linux/SessionBusAddress.h"

#include "platform/linux/Environment.h"
#include "platform/linux/GLib.h"
#include "platform/linux/GLibPointers.h"

#include <sys/stat.h>

#include <algorithm>
#include <string_view>

namespace velmora {
namespace {

bool leadsToARunningBus(std::string_view address) {
  return !address.empty() && !address.starts_with("autolaunch:") &&
         !address.starts_with("disabled:");
}

/// `addresses` is a list of alternatives. Returns those that may lead to a running bus, or none.
std::optional<std::string> runningBuses(std::string_view addresses) {
  std::string kept;
  while (!addresses.empty()) {
    const std::string_view address = addresses.substr(0, addresses.find(';'));
    addresses.remove_prefix(std::min(address.size() + 1, addresses.size()));
    if (!leadsToARunningBus(address)) {
      continue;
    }
    if (!kept.empty()) {
      kept.push_back(';');
    }
    kept.append(address);
  }
  return kept.empty() ? std::nullopt : std::optional(kept);
}

bool isSocket(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

}  // namespace

std::optional<std::string> sessionBusAddress(const Environment& environment) {
  const auto address = environment.variable(sessionBusAddressVariable);
  if (address && !address->empty()) {
    return runningBuses(*address);
  }
  const auto runtimeDirectory = environment.absolutePath("XDG_RUNTIME_DIR");
  if (!runtimeDirectory) {
    return std::nullopt;
  }
  const std::string path = std::string(*runtimeDirectory) + "/bus";
  if (!isSocket(path)) {
    return std::nullopt;
  }
  const GLibPointer<char> escaped(glib().g_dbus_address_escape_value(path.c_str()));
  return std::string("unix:path=") + escaped.get();
}

}  // namespace velmora
