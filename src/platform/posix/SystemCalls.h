// Helpers for POSIX file calls: a path that ends in NUL, repetition after signals, limited waits.
#pragma once

#include "platform/PlatformError.h"

#include <poll.h>

#include <cerrno>
#include <chrono>
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

/// Waits until `descriptor` has one of the `events` of poll(2). False after the deadline, and when
/// the waiting fails.
[[nodiscard]] inline bool awaitEvents(int descriptor, short events,
                                      std::chrono::steady_clock::time_point deadline) {
  using std::chrono::milliseconds;
  pollfd file{.fd = descriptor, .events = events, .revents = 0};
  int count = -1;
  do {
    const auto rest = std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now());
    if (rest <= milliseconds::zero()) {
      return false;
    }
    count = ::poll(&file, 1, static_cast<int>(rest.count()));
  } while (count == 0 || (count < 0 && errno == EINTR));
  return count > 0;
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
