#include "platform/posix/PasswordDatabase.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <concepts>
#include <cstddef>
#include <vector>

namespace velmora {
namespace {

/// The home directory that a reentrant look-up finds. Calls `lookUp(record, buffer, size, found)`
/// with a larger buffer as long as it returns ERANGE.
template <std::invocable<passwd*, char*, std::size_t, passwd**> LookUp>
std::optional<std::string> homeIn(LookUp lookUp) {
  // No real record is longer; a longer one can only be meant to exhaust memory.
  constexpr std::size_t maxSize = 1024UL * 1024;
  std::vector<char> buffer(1024);
  passwd record = {};
  passwd* found = nullptr;
  while (lookUp(&record, buffer.data(), buffer.size(), &found) == ERANGE &&
         buffer.size() < maxSize) {
    buffer.resize(buffer.size() * 2);
  }
  if (found == nullptr || found->pw_dir == nullptr || *found->pw_dir != '/') {
    return std::nullopt;
  }
  return found->pw_dir;
}

}  // namespace

std::optional<std::string> passwordEntryHome() {
  return homeIn([](passwd* record, char* buffer, std::size_t size, passwd** found) {
    return ::getpwuid_r(::getuid(), record, buffer, size, found);
  });
}

std::optional<std::string> passwordEntryHomeOf(const std::string& userName) {
  return homeIn([&](passwd* record, char* buffer, std::size_t size, passwd** found) {
    return ::getpwnam_r(userName.c_str(), record, buffer, size, found);
  });
}

}  // namespace velmora
