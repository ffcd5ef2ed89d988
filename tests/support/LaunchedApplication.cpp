#include "tests/support/LaunchedApplication.h"

#include <sys/socket.h>
#include <sys/wait.h>

namespace velmora {
namespace {

/// The next field; empty at the end.
std::string readField(const FileDescriptor& connection) {
  std::string field;
  for (char character = 0; ::recv(connection.get(), &character, 1, 0) == 1 && character != '\0';) {
    field += character;
  }
  return field;
}

}  // namespace

std::string applicationCommand(const Listener& listener, const std::string& arguments,
                               const std::string& name) {
  return "\"" VELMORA_TEST_LAUNCHED_APPLICATION "\" " + listener.path() + " " + name + " " +
         arguments;
}

LaunchedApplication::LaunchedApplication(const Listener& listener)
    : connection_(listener.accept()) {
  for (std::string field = readField(connection_); !field.empty(); field = readField(connection_)) {
    fields_.push_back(std::move(field));
  }
}

LaunchedApplication::~LaunchedApplication() {
  connection_ = FileDescriptor::adopt(-1);
  // Fails for an application that the bus has started, because only the bus can wait for its child.
  ::waitpid(process(), nullptr, 0);
}

std::vector<std::string> LaunchedApplication::values(std::string_view name) const {
  const std::string beginning = std::string(name) + "=";
  std::vector<std::string> result;
  for (const std::string& field : fields_) {
    if (field.starts_with(beginning)) {
      result.push_back(field.substr(beginning.size()));
    }
  }
  return result;
}

std::optional<std::string> LaunchedApplication::variable(const std::string& name) const {
  const std::vector<std::string> found = values("environment=" + name);
  return found.empty() ? std::nullopt : std::optional(found.front());
}

}  // namespace velmora
