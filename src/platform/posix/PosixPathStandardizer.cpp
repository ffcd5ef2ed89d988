#include "platform/posix/PosixPathStandardizer.h"

#include "platform/posix/PasswordDatabase.h"
#include "text/LexicalPath.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace velmora {

namespace {

/// The home directory of `user`, or of the user of this process when `user` is empty.
std::optional<std::string> homeDirectory(const std::string& user, const std::string& ownHome) {
  if (!user.empty()) {
    return passwordEntryHomeOf(user);
  }
  return ownHome.starts_with('/') ? ownHome : passwordEntryHome();
}

/// Expands the tilde at the beginning of `path`. Returns `path` when the home directory is unknown.
std::string expandingTilde(std::string_view path, const std::string& ownHome) {
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
  // The kernel reports a working directory outside of the root as "(unreachable)/…".
  if (error || !directory.is_absolute()) {
    return {};
  }
  return lexicallyStandardized(appendingPathComponent(directory.string(), path));
}

Text PosixPathStandardizer::standardizedPath(const Text& path) const {
  return path.view().starts_with('~') ? lexicallyStandardized(expandingTilde(path, home_))
                                      : lexicallyStandardized(path);
}

std::vector<Text> PosixPathStandardizer::pathsStandardizedTo(const Text& path) const {
  return {path};
}

}  // namespace velmora
