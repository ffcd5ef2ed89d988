#include "tests/process/Expectations.h"

#include "tests/process/JSONLine.h"
#include "tests/process/ScratchHome.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <stdexcept>

namespace velmora::process {

namespace {

bool fits(char character, char pattern) {
  const std::string_view choice = pattern == '9'   ? "0123456789"
                                  : pattern == 'H' ? "0123456789ABCDEF"
                                  : pattern == 'V' ? "89AB"
                                                   : std::string_view(&pattern, 1);
  return choice.find(character) != std::string_view::npos;
}

}  // namespace

Request parseRequest(const std::string& json) {
  const JSONLine object(json);
  if (object.keys() != std::vector<std::string>{"action", "createdAt", "folderPaths"}) {
    throw std::runtime_error("other keys: " + json);
  }
  Request request{.action = object.text("/action"),
                  .createdAt = object.text("/createdAt"),
                  .folderPaths = object.texts("/folderPaths")};
  if (request.folderPaths.empty() || !hasForm(request.createdAt, momentForm)) {
    throw std::runtime_error("not a request: " + json);
  }
  return request;
}

bool hasForm(std::string_view text, std::string_view pattern) {
  return std::ranges::equal(text, pattern, fits);
}

std::string currentMoment() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  ::gmtime_r(&now, &parts);
  std::array<char, 32> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
  return {text.data(), length};
}

std::string message(std::string_view language, std::string_view key) {
  const std::filesystem::path folder =
      std::filesystem::path(VELMORA_TEST_RESOURCES) / (std::string(language) + ".lproj");
  const std::string table = readFile(folder / "Localizable.strings");
  const std::string opening = "\"" + std::string(key) + "\" = \"";
  const std::size_t found = table.find(opening);
  const std::size_t start = found + opening.size();
  const std::size_t end = found == std::string::npos ? found : table.find("\";\n", start);
  if (end == std::string::npos) {
    throw std::runtime_error(folder.string() + " lacks " + std::string(key));
  }
  return table.substr(start, end - start);
}

std::vector<std::string> namesIn(const std::filesystem::path& directory) {
  std::vector<std::string> result;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    result.push_back(entry.path().filename());
  }
  std::ranges::sort(result);
  return result;
}

std::string substituted(std::string text, std::string_view placeholder, std::string_view value) {
  std::size_t found = text.find(placeholder);
  while (found != std::string::npos) {
    text.replace(found, placeholder.size(), value);
    found = text.find(placeholder, found + value.size());
  }
  return text;
}

}  // namespace velmora::process
