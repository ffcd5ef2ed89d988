#include "platform/posix/ReadAll.h"
#include "tests/support/ErrorCode.h"

#include <gtest/gtest.h>

#include <sys/types.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

constexpr std::size_t piece = contentPieceLength;

/// Delivers bytes as a file does, and records the requests.
class Source {
 public:
  /// A call delivers at most `lengthAtATime` bytes.
  explicit Source(std::string bytes, std::size_t lengthAtATime = piece)
      : bytes_(std::move(bytes)), lengthAtATime_(lengthAtATime) {}

  /// The next call that would deliver the byte at `position` or the end fails with `error`.
  void failAt(std::size_t position, int error) {
    failurePosition_ = position;
    failure_ = error;
  }

  ssize_t operator()(char* room, std::size_t size) {
    rooms.push_back(room);
    sizes.push_back(size);
    if (failure_ != 0 && delivered >= failurePosition_) {
      errno = failure_;
      return -1;
    }
    const std::size_t length = std::min({size, lengthAtATime_, bytes_.size() - delivered});
    std::copy_n(bytes_.data() + delivered, length, room);
    delivered += length;
    return static_cast<ssize_t>(length);
  }

  std::size_t delivered = 0;
  std::vector<char*> rooms;
  std::vector<std::size_t> sizes;

 private:
  std::string bytes_;
  std::size_t lengthAtATime_;
  std::size_t failurePosition_ = 0;
  int failure_ = 0;
};

/// Bytes in which neighbouring pieces differ.
std::string bytesOfLength(std::size_t length) {
  std::string bytes(length, '\0');
  for (std::size_t index = 0; index < length; ++index) {
    bytes[index] = static_cast<char>(index % 251);
  }
  return bytes;
}

std::string contentOf(Source& source, std::uintmax_t claimedLength, std::size_t maxLength) {
  return readAll(claimedLength, maxLength,
                 [&](char* room, std::size_t size) { return source(room, size); });
}

int errorCodeOfContent(Source& source, std::uintmax_t claimedLength, std::size_t maxLength) {
  return errorCodeOf([&] { return contentOf(source, claimedLength, maxLength); });
}

constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

TEST(ReadAll, readsAtMostOnePieceAtATime) {
  constexpr std::size_t farTooMuch = std::size_t{1} << 30U;
  const struct {
    const char* name;
    std::size_t claimedLength;
    std::size_t actualLength;
    std::size_t maxLength;
    std::size_t lengthAtATime = piece;
  } rows[] = {
      {"empty", 0, 0, unlimited},
      {"emptyAndNoneAllowed", 0, 0, 0},
      {"small", 100, 100, unlimited},
      {"asLongAsAllowed", 100, 100, 100},
      {"onePiece", piece, piece, piece},
      {"overAPiece", piece + 1, piece + 1, unlimited},
      {"manyPieces", 5 * piece + 7, 5 * piece + 7, 5 * piece + 7},
      {"inDrops", 1000, 1000, 1000, 1},
      {"claimsNothing", 0, 3 * piece, unlimited},
      {"claimsNothingInDrops", 0, 5000, 5000, 3},
      {"grown", 100, piece + 100, piece + 100},
      {"grownByAByte", 100, 101, 101},
      {"shrunk", 2 * piece, 100, 2 * piece},
      {"shrunkToNothing", 2 * piece, 0, 2 * piece},
      {"claimsFarTooMuch", farTooMuch, 100, farTooMuch},
  };
  for (const auto& row : rows) {
    const std::string bytes = bytesOfLength(row.actualLength);
    Source source(bytes, row.lengthAtATime);
    // EXPECT_EQ would print millions of bytes.
    EXPECT_TRUE(contentOf(source, row.claimedLength, row.maxLength) == bytes) << row.name;
    EXPECT_LE(std::ranges::max(source.sizes), piece) << row.name;
  }
}

TEST(ReadAll, readsNothingWhenTheClaimedLengthIsTooLong) {
  for (const std::uintmax_t claimedLength : {std::uintmax_t{101}, std::uintmax_t{1} << 33U,
                                             std::numeric_limits<std::uintmax_t>::max()}) {
    Source source("short");
    EXPECT_EQ(errorCodeOfContent(source, claimedLength, 100), EFBIG) << claimedLength;
    EXPECT_TRUE(source.sizes.empty()) << claimedLength;
  }
}

TEST(ReadAll, refusesALengthBeyondAnyString) {
  Source source("short");
  EXPECT_EQ(errorCodeOfContent(source, std::string().max_size(), unlimited), EFBIG);
  EXPECT_EQ(errorCodeOfContent(source, std::numeric_limits<std::uintmax_t>::max(), unlimited),
            EFBIG);
}

TEST(ReadAll, stopsAtTheFirstByteOverTheMaximum) {
  for (const std::size_t claimedLength : {std::size_t{0}, std::size_t{100}, 2 * piece}) {
    Source source(bytesOfLength(9 * piece));
    EXPECT_EQ(errorCodeOfContent(source, claimedLength, 2 * piece), EFBIG) << claimedLength;
    EXPECT_EQ(source.delivered, 2 * piece + 1) << claimedLength;
  }
}

TEST(ReadAll, copiesNothingWhenTheClaimedLengthIsRight) {
  constexpr std::size_t length = 4 * piece;
  Source source(bytesOfLength(length));
  const std::string content = contentOf(source, length, length);
  ASSERT_EQ(source.rooms.size(), 5U);
  for (std::size_t index = 0; index < source.rooms.size(); ++index) {
    EXPECT_EQ(source.rooms[index], content.data() + index * piece) << index;
  }
}

TEST(ReadAll, raisesTheErrorOfACall) {
  for (const std::size_t position : {std::size_t{0}, piece, 2 * piece}) {
    Source source(bytesOfLength(2 * piece));
    source.failAt(position, EIO);
    EXPECT_EQ(errorCodeOfContent(source, 2 * piece, 2 * piece), EIO) << position;
    EXPECT_EQ(source.delivered, position);
  }
}

}  // namespace
}  // namespace velmora
