// An application is found by the name of its desktop entry, "<bundle identifier>.desktop". Opening
// it tries three ways. A running application with D-Bus activation gets a call over the bus.
// Otherwise GIO runs the command of the entry. If that fails and the application has D-Bus
// activation, the bus starts it, and finishPendingActivation waits for that. FileReader reads every
// entry before GIO does, because GIO would wait for ever on a named pipe.
#include "platform/linux/LinuxWorkspace.h"

#include "platform/FileReader.h"
#include "platform/linux/Environment.h"
#include "platform/linux/GLib.h"
#include "platform/linux/SessionBus.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

constexpr std::string_view entrySuffix = ".desktop";

/// Far more than any desktop entry, even with many translations; a longer file is not read.
constexpr std::size_t maxEntryLength = 1024 * 1024;

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

GLibPointer<GKeyFile> readEntry(const std::string& location, const FileReader& fileReader) {
  // Not read by GLib, which would wait for ever on a named pipe.
  const std::string bytes = fileReader.read(location, maxEntryLength);
  GLibPointer<GKeyFile> entry(glib().g_key_file_new());
  const bool isRead = glib().g_key_file_load_from_data(entry.get(), bytes.data(), bytes.size(),
                                                       G_KEY_FILE_NONE, nullptr) != FALSE;
  return isRead ? std::move(entry) : nullptr;
}

/// Throws unless every existing entry of that name can be read. GIO would wait for ever on a named
/// pipe, and would read an entry of any length into memory.
void requireReadable(const std::string& fileName, const FileReader& fileReader) {
  std::vector<std::string> directories = {glib().g_get_user_data_dir()};
  for (const char* const* directory = glib().g_get_system_data_dirs(); *directory != nullptr;
       ++directory) {
    directories.emplace_back(*directory);
  }
  for (std::string& path : directories) {
    path.append("/applications/").append(fileName);
    if (fileReader.exists(path)) {
      static_cast<void>(fileReader.read(path, maxEntryLength));
    }
  }
}

/// The bus name of an application with D-Bus activation, which is the name of its entry; none for
/// another application.
std::optional<std::string> activatableName(GKeyFile& entry, std::string_view location) {
  const bool isActivatable =
      glib().g_key_file_get_boolean(&entry, G_KEY_FILE_DESKTOP_GROUP,
                                    G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE, nullptr) != FALSE;
  if (!isActivatable || !location.ends_with(entrySuffix)) {
    return std::nullopt;
  }
  location.remove_suffix(entrySuffix.size());
  location.remove_prefix(location.rfind('/') + 1);
  std::string name(location);
  if (!glib().g_dbus_is_name(name.c_str()) || glib().g_dbus_is_unique_name(name.c_str())) {
    return std::nullopt;
  }
  return name;
}

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

void handOn(GAppLaunchContext& context, const Environment& environment, const char* variable) {
  if (const auto value = environment.variable(variable)) {
    glib().g_app_launch_context_setenv(&context, variable, std::string(*value).c_str());
  } else {
    glib().g_app_launch_context_unsetenv(&context, variable);
  }
}

GObjectRef<GAppLaunchContext> launchContext(const Environment& environment, bool handsTokensOn) {
  auto context = GObjectRef<GAppLaunchContext>::adopt(glib().g_app_launch_context_new());
  // This process hides the bus address from its own libraries; the application needs it.
  handOn(*context.get(), environment, std::string(sessionBusAddressVariable).c_str());
  const Environment noTokens;
  for (const ActivationToken& token : activationTokens) {
    handOn(*context.get(), handsTokensOn ? environment : noTokens, token.variable);
  }
  return context;
}

/// Runs the entry's command. Returns false when there is none or it cannot be run.
bool runCommand(GKeyFile& entry, GAppLaunchContext& context) {
  // GIO would leave an activatable entry to the bus, and report success in every case.
  glib().g_key_file_remove_key(&entry, G_KEY_FILE_DESKTOP_GROUP,
                               G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE, nullptr);
  const auto application =
      GObjectRef<GDesktopAppInfo>::adopt(glib().g_desktop_app_info_new_from_keyfile(&entry));
  // A plain cast, because G_APP_INFO() calls a function.
  auto* command = reinterpret_cast<GAppInfo*>(application.get());
  if (command == nullptr || glib().g_app_info_get_executable(command) == nullptr) {
    return false;
  }
  // The application must not keep our pipes open or use our terminal while it runs. GIO sets
  // standard input to /dev/null anyway.
  const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL |
                                              G_SPAWN_STDERR_TO_DEV_NULL);
  const GSpawnChildSetupFunc leaveTerminal = [](gpointer) {
    setsid();
    // A child would inherit that this process ignores the signal.
    std::signal(SIGXFSZ, SIG_DFL);
  };
  return glib().g_desktop_app_info_launch_uris_as_manager(
             application.get(), /*uris=*/nullptr, &context, flags, leaveTerminal,
             /*user_setup_data=*/nullptr, /*pid_callback=*/nullptr,
             /*pid_callback_data=*/nullptr, /*error=*/nullptr) != FALSE;
}

}  // namespace

LinuxWorkspace::LinuxWorkspace(SessionBus& bus, const Environment& environment,
                               const FileReader& fileReader)
    : bus_(bus), environment_(environment), fileReader_(fileReader) {}

LinuxWorkspace::~LinuxWorkspace() = default;

std::optional<Text> LinuxWorkspace::applicationLocation(
    std::string_view bundleIdentifier) noexcept {
  try {
    const std::string fileName = std::string(bundleIdentifier).append(entrySuffix);
    requireReadable(fileName, fileReader_);
    const auto application =
        GObjectRef<GDesktopAppInfo>::adopt(glib().g_desktop_app_info_new(fileName.c_str()));
    if (!application) {
      return std::nullopt;
    }
    return Text(glib().g_desktop_app_info_get_filename(application.get()));
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
  // The application opens no document, so nothing is added to the recent items in any case.
  const GLibPointer<GKeyFile> entry = readEntry(location.utf8(), fileReader_);
  if (!entry) {
    return;
  }
  const std::optional<std::string> name =
      configuration.activates ? activatableName(*entry, location) : std::nullopt;
  if (name && bus_.nameHasOwner(*name)) {
    bus_.send(activateMethod(*name), activateArguments(environment_));
    bus_.flush();
    return;
  }
  const auto context = launchContext(environment_, configuration.activates);
  if (runCommand(*entry, *context.get()) || !name) {
    return;
  }
  pendingActivation_ = bus_.startCall(activateMethod(*name), activateArguments(environment_));
}

void LinuxWorkspace::finishPendingActivation() noexcept {
  try {
    if (const auto call = std::exchange(pendingActivation_, nullptr)) {
      call->answer();
    }
  } catch (const std::exception&) {
    // The program is about to end, and nobody needs this error.
  }
}

}  // namespace velmora
