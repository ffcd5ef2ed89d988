// An application is found by the name of its desktop entry, "<bundle identifier>.desktop". Opening
// it tries three ways. A running application with D-Bus activation gets a call over the bus.
// Otherwise the command of the entry is run. If that fails and the application has D-Bus
// activation, the bus starts it, and finishPendingActivation waits for that.
#include "platform/linux/LinuxWorkspace.h"

#include "platform/linux/Environment.h"
#include "platform/linux/GLib.h"
#include "platform/linux/SessionBus.h"
#include "platform/linux/XdgDirectories.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <exception>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

/// A launcher's token that allows another program to bring its window to the front: its variable in
/// the environment, and its key in a call of org.freedesktop.Application.
struct ActivationToken {
  const char* variable;
  const char* platformDataKey;
};

constexpr std::array<ActivationToken, 2> activationTokens = {{
    {"XDG_ACTIVATION_TOKEN", "activation-token"},
    {"DESKTOP_STARTUP_ID", "desktop-startup-id"},
}};

BusMethod activateMethod(const std::string& busName) {
  std::string path = "/" + busName;
  std::replace(path.begin(), path.end(), '.', '/');
  // "-" is valid in a bus name but not in an object path. All applications replace it in this way.
  std::replace(path.begin(), path.end(), '-', '_');
  return {busName, std::move(path), "org.freedesktop.Application", "Activate"};
}

GLibPointer<GVariant> activateArguments(const Environment& environment) {
  GVariantBuilder platformData;
  glib().g_variant_builder_init(&platformData, G_VARIANT_TYPE_VARDICT);
  for (const ActivationToken& token : activationTokens) {
    const std::string value(environment.variable(token.variable).value_or(std::string_view()));
    if (!value.empty() && glib().g_utf8_validate(value.c_str(), -1, nullptr) != FALSE) {
      glib().g_variant_builder_add(&platformData, "{sv}", token.platformDataKey,
                                   glib().g_variant_new_string(value.c_str()));
    }
  }
  return ownVariant(glib().g_variant_new("(a{sv})", &platformData));
}

bool isToken(std::string_view variable) {
  return std::ranges::any_of(
      activationTokens, [&](const ActivationToken& token) { return variable == token.variable; });
}

/// The variables of the application.
std::vector<std::string> variablesFrom(const Environment& environment, bool handsTokensOn) {
  std::vector<std::string> variables;
  for (const auto& [name, value] : environment.variables()) {
    if (handsTokensOn || !isToken(name)) {
      variables.push_back(std::string(name).append("=").append(value));
    }
  }
  return variables;
}

/// The form of a system call: pointers to the texts, then null. Valid as long as `texts`.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers(texts.size() + 1, nullptr);
  std::ranges::transform(texts, pointers.begin(), [](std::string& text) { return text.data(); });
  return pointers;
}

/// Runs a command. Returns false when it is empty or cannot be run.
bool run(std::vector<std::string> command, const std::string& workingDirectory,
         std::vector<std::string> variables) {
  if (command.empty()) {
    return false;
  }
  // The application must not keep our pipes open or use our terminal while it runs. GLib sets
  // standard input to /dev/null anyway.
  const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL |
                                              G_SPAWN_STDERR_TO_DEV_NULL);
  const GSpawnChildSetupFunc leaveTerminal = [](gpointer) {
    setsid();
    // A child would inherit that this process ignores the signal.
    std::signal(SIGXFSZ, SIG_DFL);
  };
  return glib().g_spawn_async(workingDirectory.empty() ? nullptr : workingDirectory.c_str(),
                              pointersTo(command).data(), pointersTo(variables).data(), flags,
                              leaveTerminal, /*user_data=*/nullptr, /*child_pid=*/nullptr,
                              /*error=*/nullptr) != FALSE;
}

}  // namespace

LinuxWorkspace::LinuxWorkspace(SessionBus& bus, const Environment& environment,
                               const FileReader& fileReader)
    : bus_(bus), environment_(environment), fileReader_(fileReader) {}

std::optional<Text> LinuxWorkspace::applicationLocation(
    std::string_view bundleIdentifier) noexcept {
  try {
    std::optional<DesktopEntry> entry =
        findDesktopEntry(bundleIdentifier, xdgDataDirectories(environment_), fileReader_);
    if (!entry) {
      return std::nullopt;
    }
    Text location(entry->path);
    found_.insert_or_assign(location.utf8(), *std::move(entry));
    return location;
  } catch (const std::exception&) {
    // Counts as not installed: the request waits for the application's next start.
    return std::nullopt;
  }
}

void LinuxWorkspace::openApplication(const Text& location,
                                     OpenConfiguration configuration) noexcept {
  try {
    open(location, configuration);
  } catch (const std::exception&) {
    // The request waits for the application's next start.
  }
}

void LinuxWorkspace::open(const Text& location, OpenConfiguration configuration) {
  const auto found = found_.find(location.utf8());
  if (found == found_.end()) {
    return;
  }
  requireMemoryForGLib();
  // The application opens no document, so nothing is added to the recent items in any case.
  const DesktopEntry& entry = found->second;
  const std::optional<std::string> name =
      configuration.activates ? entry.busName : std::optional<std::string>();
  if (name && bus_.nameHasOwner(*name)) {
    bus_.send(activateMethod(*name), activateArguments(environment_));
    bus_.flush();
    return;
  }
  if (run(entry.command, entry.workingDirectory,
          variablesFrom(environment_, configuration.activates)) ||
      !name) {
    return;
  }
  pendingActivation_ = bus_.startCall(activateMethod(*name), activateArguments(environment_));
}

void LinuxWorkspace::finishPendingActivation() noexcept {
  try {
    if (const auto call = std::exchange(pendingActivation_, std::nullopt)) {
      bus_.awaitAnswer(*call);
    }
  } catch (const std::exception&) {
    // The program is about to end, and nobody needs this error.
  }
}

}  // namespace velmora
