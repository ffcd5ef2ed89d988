// The variables that the program was started with.
//
// Captured once, before any thread: the process's own environment cannot be read safely while a
// library may be changing it, and one variable is changed on purpose (see below). Nothing else
// reads the process's environment.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// The variable with the address of the session bus.
inline constexpr std::string_view sessionBusAddressVariable = "DBUS_SESSION_BUS_ADDRESS";

/// A plain value. The views that it returns live as long as it does.
class Environment {
 public:
  using Variables = std::map<std::string, std::string, std::less<>>;

  Environment() = default;
  explicit Environment(Variables variables);

  /// The value of `name`, which may be empty; none when the variable is not set.
  [[nodiscard]] std::optional<std::string_view> variable(std::string_view name) const;

  /// The value of `name` when it is an absolute path. A relative one counts as not set, as the
  /// XDG Base Directory Specification wants it.
  [[nodiscard]] std::optional<std::string_view> absolutePath(std::string_view name) const;

 private:
  Variables variables_;
};

/// The variables of this process. Of several with one name the first counts, as in getenv.
[[nodiscard]] Environment captureEnvironment();

/// Hides the session bus from the libraries that would connect to it on their own, without a limit
/// of time, and would even start a bus where there is none. First thing in main, before any thread,
/// after captureEnvironment(), which keeps the address for our own use and for our children.
void detachSessionBusFromLibraries();

}  // namespace velmora
