// Reads a source to its end when the length that it claims cannot be trusted.
#pragma once

#include "platform/PlatformError.h"

#include <algorithm>
#include <cerrno>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>

namespace velmora {

/// The number of bytes requested per call, and the most that is filled in advance. Large enough
/// that a call costs little compared to its copying, small enough for a processor's cache.
inline constexpr std::size_t contentPieceLength = 256 * 1024;

/// All bytes that `readSome(char* room, std::size_t size)` delivers until it returns 0. `readSome`
/// works like read(2) on one descriptor. Throws EFBIG for more than `maxLength` bytes, without any
/// call if `claimedLength` exceeds that already. Throws the errno value of a call that fails.
///
/// Reserves address space for `claimedLength` at once, so that a file with a true length is not
/// copied again. Touches memory only as bytes arrive, at most one piece in advance. For bytes
/// beyond `claimedLength`, the string grows as usual.
template <std::invocable<char*, std::size_t> ReadSome>
std::string readAll(std::uintmax_t claimedLength, std::size_t maxLength, ReadSome readSome) {
  std::string content;
  // One additional byte detects the end of the source, or a byte beyond the limit.
  const std::size_t limit = std::min(maxLength, content.max_size() - 1);
  if (claimedLength > limit) {
    throw posixError(EFBIG);
  }
  content.reserve(static_cast<std::size_t>(claimedLength) + 1);
  std::size_t length = 0;
  while (true) {
    if (length > limit) {
      throw posixError(EFBIG);
    }
    const std::size_t reserved = content.capacity() - length;
    const std::size_t size = std::min(
        {reserved > 0 ? reserved : contentPieceLength, contentPieceLength, limit + 1 - length});
    content.resize(length + size);
    const auto count = readSome(content.data() + length, size);
    if (count < 0) {
      throw posixError(errno);
    }
    if (count == 0) {
      content.resize(length);
      return content;
    }
    length += static_cast<std::size_t>(count);
  }
}

}  // namespace velmora
