// Helpers for POSIX file calls: a path that ends in NUL, and repetition after signals.
#pragma once

#include "platform/PlatformError.h"

#include <cerrno>
#include <concepts>
#include <string>
#include <string_view>

namespace velmora {

/// Repeats `systemCall` while a signal interrupts it (EINTR), and returns its last result.
template <std::invocable Call>
auto retryingInterrupted(Call systemCall) {
  auto result = systemCall();
  while (result < 0 && errno == EINTR) {
    result = systemCall();
  }
  return result;
}

/// `path` as a string for a system call. Throws the error of a missing file (ENOENT) for a path
/// with a NUL: a system call would end the path there and use another file.
[[nodiscard]] inline std::string systemPath(std::string_view path) {
  if (path.find('\0') != std::string_view::npos) {
    throw posixError(ENOENT);
  }
  return std::string(path);
}

}  // namespace velmora
