// What every use of a POSIX file call needs: a path that ends in NUL, and patience with signals.
#pragma once

#include "platform/PlatformError.h"

#include <cerrno>
#include <concepts>
#include <string>
#include <string_view>

namespace velmora {

/// Calls `systemCall` again while a signal interrupts it (EINTR); its result otherwise.
template <std::invocable Call>
auto retryingInterrupted(Call systemCall) {
  auto result = systemCall();
  while (result < 0 && errno == EINTR) {
    result = systemCall();
  }
  return result;
}

/// `path` for a system call. Throws the error of a missing file for a path that holds a NUL: cut
/// there, it would name another file.
[[nodiscard]] inline std::string systemPath(std::string_view path) {
  if (path.find('\0') != std::string_view::npos) {
    throw posixError(ENOENT);
  }
  return std::string(path);
}

}  // namespace velmora
