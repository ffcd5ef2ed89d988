// A running application that a launcher or a bus has started. The program launched_application
// describes itself to the test.
//
// It sends "name=value" fields, each ended by NUL, and then an empty field.
#pragma once

#include "tests/support/Listener.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The command of a desktop entry or service file that starts the application, which reports to
/// `listener`. An application with a `name` first owns this name, and takes the calls that waited
/// for it.
std::string applicationCommand(const Listener& listener, const std::string& arguments = "",
                               const std::string& name = "-");

/// The application ends with its owner.
class LaunchedApplication {
 public:
  /// Waits for an application that reports to `listener`.
  explicit LaunchedApplication(const Listener& listener);
  LaunchedApplication(const LaunchedApplication&) = delete;
  LaunchedApplication& operator=(const LaunchedApplication&) = delete;
  ~LaunchedApplication();

  /// The values of all fields with this name.
  std::vector<std::string> values(std::string_view name) const;
  /// The value of the only field with this name.
  std::string value(std::string_view name) const { return values(name).at(0); }
  pid_t process() const { return std::stoi(value("process")); }
  std::optional<std::string> variable(const std::string& name) const;

 private:
  FileDescriptor connection_;
  std::vector<std::string> fields_;
};

}  // namespace velmora
