// Reads to the end of something whose length is a claim that nobody answers for.
#pragma once

#include "platform/PlatformError.h"

#include <algorithm>
#include <cerrno>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>

namespace velmora {

/// How much is asked for at a time, and the most that is filled in advance: large enough for calls
/// to cost nothing beside what they copy, small enough to stay in a processor's cache in between.
inline constexpr std::size_t contentPieceLength = 256 * 1024;

/// All that `readSome(char* room, std::size_t size)` delivers, which works like a bound read(2),
/// until it returns 0. Throws EFBIG when that is more than `maxLength` bytes, without a call
/// when `claimedLength` already is, and the error of a call that fails. Address space is taken
/// for `claimedLength` at once, so that honest files are not copied about; memory is touched only
/// as bytes arrive, at most a piece in advance. What exceeds the claim makes the string grow as
/// strings do.
template <std::invocable<char*, std::size_t> ReadSome>
std::string readAll(std::uintmax_t claimedLength, std::size_t maxLength, ReadSome readSome) {
  std::string content;
  // One byte of room is kept to see the end, or that there is more than there may be.
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
