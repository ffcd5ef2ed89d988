// The running application that a launcher or a bus has started: the program launched_application,
// which tells the test of itself.
//
// On the wire is a row of "name=value" fields, each ended by NUL, and an empty field.
#pragma once

#include "tests/support/Listener.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The command of a desktop entry or service file that starts the application, which reports to
/// `listener`; when it has a `name`, once it has that on the bus and the calls that waited for it.
std::string applicationCommand(const Listener& listener, const std::string& arguments = "",
                               const std::string& name = "-");

/// Ends with its owner.
class LaunchedApplication {
 public:
  /// Waits for an application that reports to `listener`.
  explicit LaunchedApplication(const Listener& listener);
  LaunchedApplication(const LaunchedApplication&) = delete;
  LaunchedApplication& operator=(const LaunchedApplication&) = delete;
  ~LaunchedApplication();

  /// The values of that name, which are those that the program writes.
  std::vector<std::string> values(std::string_view name) const;
  /// The only one.
  std::string value(std::string_view name) const { return values(name).at(0); }
  pid_t process() const { return std::stoi(value("process")); }
  std::optional<std::string> variable(const std::string& name) const;

 private:
  FileDescriptor connection_;
  std::vector<std::string> fields_;
};

}  // namespace velmora
