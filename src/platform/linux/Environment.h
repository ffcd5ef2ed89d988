// The environment variables at the start of the program.
//
// They are captured once, before any thread starts. Later reads of the process's environment would
// not be safe, because a library may change it at the same time. No other code of the project reads
// the process's environment.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// The variable with the address of the session bus.
inline constexpr std::string_view sessionBusAddressVariable = "DBUS_SESSION_BUS_ADDRESS";

/// A value. The views that it returns are valid as long as it exists.
class Environment {
 public:
  using Variables = std::map<std::string, std::string, std::less<>>;

  Environment() = default;
  explicit Environment(Variables variables);

  /// The value of `name`, which may be empty; none when the variable is not set.
  [[nodiscard]] std::optional<std::string_view> variable(std::string_view name) const;

  /// The value of `name` when it is an absolute path. A relative path counts as not set, as the XDG
  /// Base Directory Specification requires.
  [[nodiscard]] std::optional<std::string_view> absolutePath(std::string_view name) const;

  [[nodiscard]] const Variables& variables() const { return variables_; }

 private:
  Variables variables_;
};

/// The variables of this process. The first of several with the same name counts, as in getenv.
[[nodiscard]] Environment captureEnvironment();

}  // namespace velmora
