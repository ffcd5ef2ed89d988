#include "platform/posix/PosixPathStandardizer.h"

#include "text/LexicalPath.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace velmora {

namespace {

std::optional<std::string> homeInPasswordDatabase(const std::string& user) {
  // Records longer than this exist only to exhaust memory.
  std::vector<char> buffer(64 * 1024);
  passwd record{};
  passwd* found = nullptr;
  const int error = user.empty()
                        ? ::getpwuid_r(::getuid(), &record, buffer.data(), buffer.size(), &found)
                        : ::getpwnam_r(user.c_str(), &record, buffer.data(), buffer.size(), &found);
  if (error != 0 || found == nullptr || found->pw_dir == nullptr) {
    return std::nullopt;
  }
  return found->pw_dir;
}

/// The home directory of `user`, or of the user of this process when that is empty.
std::optional<std::string> homeDirectory(const std::string& user, const std::string& ownHome) {
  return user.empty() && ownHome.starts_with('/') ? ownHome : homeInPasswordDatabase(user);
}

std::string expandingTilde(std::string_view path, const std::string& ownHome) {
  if (!path.starts_with('~')) {
    return std::string(path);
  }
  const std::size_t end = std::min(path.find('/'), path.size());
  const std::optional<std::string> home =
      homeDirectory(std::string(path.substr(1, end - 1)), ownHome);
  return home.has_value() ? *home + std::string(path.substr(end)) : std::string(path);
}

}  // namespace

Text PosixPathStandardizer::standardizedFileURLPath(const Text& path) const {
  if (path.view().starts_with('/')) {
    return lexicallyStandardized(path);
  }
  std::error_code error;
  const std::filesystem::path directory = std::filesystem::current_path(error);
  // The kernel names a directory that was moved out of reach "(unreachable)/…".
  if (error || !directory.is_absolute()) {
    return {};
  }
  return lexicallyStandardized(appendingPathComponent(directory.string(), path));
}

Text PosixPathStandardizer::standardizedPath(const Text& path) const {
  return lexicallyStandardized(expandingTilde(path, home_));
}

}  // namespace velmora
