#include "platform/linux/ExecLine.h"

#include "platform/linux/GLib.h"
#include "platform/linux/GLibPointers.h"

#include <cstddef>
#include <utility>

namespace velmora {
namespace {

std::string withoutFieldCodes(std::string_view argument, const FieldCodes& codes) {
  std::string result;
  for (std::size_t index = 0; index < argument.size(); ++index) {
    if (argument[index] != '%' || index + 1 == argument.size()) {
      result += argument[index];
      continue;
    }
    ++index;
    if (argument[index] == '%') {
      result += '%';
    } else if (argument[index] == 'c') {
      result += codes.name;
    } else if (argument[index] == 'k') {
      result += codes.path;
    }
  }
  return result;
}

}  // namespace

std::optional<std::vector<std::string>> parseExecLine(const std::string& line,
                                                      const FieldCodes& codes) {
  char** words = nullptr;
  if (glib().g_shell_parse_argv(line.c_str(), /*argcp=*/nullptr, &words, nullptr) == FALSE) {
    return std::nullopt;
  }
  const GLibPointer<char*> owner(words);
  std::vector<std::string> command;
  for (; *words != nullptr; ++words) {
    const std::string_view word(*words);
    if (word == "%i") {
      if (!codes.icon.empty()) {
        command.insert(command.end(), {"--icon", codes.icon});
      }
      continue;
    }
    std::string argument = withoutFieldCodes(word, codes);
    if (!argument.empty() || word.empty()) {
      command.push_back(std::move(argument));
    }
  }
  return command;
}

}  // namespace velmora
