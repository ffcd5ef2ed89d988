#include "platform/PlatformError.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/RowName.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace velmora {
namespace {

using std::string_literals::operator""s;

/// More than any file of these tests has, but for the ones that are to be too long.
constexpr std::size_t plenty = 16 * 1024 * 1024;

/// The number that the next file to be opened gets: higher when one has been left open.
int nextDescriptor() {
  return FileDescriptor::adopt(::open("/dev/null", O_RDONLY | O_CLOEXEC)).get();
}

/// What `operation` returns in a process that is nobody's, where this one is root's: to root,
/// nothing is unreadable. Values fit an exit status.
int resultForOrdinaryUser(const std::function<int()>& operation) {
  const pid_t child = ::fork();
  if (child == 0) {
    constexpr uid_t nobody = 65534;
    ::_exit(::geteuid() == 0 && ::setuid(nobody) != 0 ? 255 : operation());
  }
  int status = 0;
  require(child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status), "child");
  return WEXITSTATUS(status);
}

class ReadingPosixFiles : public testing::Test {
 protected:
  static int errorCodeOf(const std::function<void()>& operation) {
    try {
      operation();
    } catch (const PlatformError& error) {
      EXPECT_EQ(error.what(), std::string(std::strerror(error.code())));
      return error.code();
    }
    return 0;
  }

  int errorCodeOfReading(const std::string& path) {
    return errorCodeOf([&] { static_cast<void>(reader.read(path, plenty)); });
  }

  int errorCodeOfOpening(const std::string& path) {
    return errorCodeOf([&] { static_cast<void>(reader.open(path, plenty)); });
  }

  int errorCodeOfNames(const std::string& path) {
    return errorCodeOf([&] { static_cast<void>(reader.entryNames(path)); });
  }

  ScratchDirectory directory;
  PosixFileReader reader;
};

TEST_F(ReadingPosixFiles, readsMoreThanOnePiece) {
  const std::string bytes = std::string(1'000'000, 'x') + "end";
  directory.write("file", bytes);
  EXPECT_TRUE(reader.read(directory.path("file"), plenty) == bytes);
}

TEST_F(ReadingPosixFiles, readsThroughALink) {
  directory.write("file", "content");
  link("file", directory.path("link"));
  EXPECT_EQ(reader.read(directory.path("link"), plenty), "content");
}

TEST_F(ReadingPosixFiles, followsLinksToDirectories) {
  directory.write("real/file", "");
  link("real", directory.path("link"));
  EXPECT_TRUE(reader.isDirectory(directory.path("link")));
  EXPECT_EQ(reader.entryNames(directory.path("link")), std::vector<std::string>{"file"});
}

TEST_F(ReadingPosixFiles, takesADanglingLinkForNothing) {
  link("missing", directory.path("link"));
  EXPECT_FALSE(reader.exists(directory.path("link")));
  EXPECT_FALSE(reader.isDirectory(directory.path("link")));
}

TEST_F(ReadingPosixFiles, takesALoopingLinkForNothing) {
  link("loop", directory.path("loop"));
  EXPECT_FALSE(reader.exists(directory.path("loop")));
  EXPECT_FALSE(reader.isDirectory(directory.path("loop")));
}

TEST_F(ReadingPosixFiles, doesNotCutAPathAtNUL) {
  directory.write("file", "content");
  const std::string path = directory.path("file") + "\0.json"s;
  EXPECT_FALSE(reader.exists(path));
  EXPECT_FALSE(reader.isDirectory(directory.path() + "\0x"s));
  EXPECT_EQ(errorCodeOfReading(path), ENOENT);
  EXPECT_EQ(errorCodeOfOpening(path), ENOENT);
  EXPECT_EQ(errorCodeOfNames(directory.path() + "\0x"s), ENOENT);
}

TEST_F(ReadingPosixFiles, refusesANameThatIsTooLong) {
  const std::string path = directory.path(std::string(5000, 'x'));
  EXPECT_FALSE(reader.exists(path));
  EXPECT_EQ(errorCodeOfReading(path), ENAMETOOLONG);
  EXPECT_EQ(errorCodeOfNames(path), ENAMETOOLONG);
}

struct HostileCase {
  std::string name;
  /// Makes something at a path.
  void (*make)(const std::string& path);
  int readingError;
  int namesError;
};

std::ostream& operator<<(std::ostream& out, const HostileCase& row) { return out << row.name; }

class HostileEntry : public ReadingPosixFiles, public testing::WithParamInterface<HostileCase> {};

TEST_P(HostileEntry, isNeitherReadNorWaitedFor) {
  const std::string path = directory.path("entry");
  GetParam().make(path);
  const int descriptor = nextDescriptor();
  EXPECT_EQ(errorCodeOfReading(path), GetParam().readingError);
  EXPECT_EQ(errorCodeOfOpening(path), GetParam().readingError);
  EXPECT_EQ(errorCodeOfNames(path), GetParam().namesError);
  EXPECT_EQ(nextDescriptor(), descriptor);
}

INSTANTIATE_TEST_SUITE_P(
    Table, HostileEntry,
    testing::Values(
        HostileCase{
            "fifoWithoutAWriter",
            [](const std::string& path) { require(::mkfifo(path.c_str(), 0600) == 0, path); },
            EINVAL, ENOTDIR},
        HostileCase{"linkToAFIFO",
                    [](const std::string& path) {
                      require(::mkfifo((path + ".fifo").c_str(), 0600) == 0, path);
                      link(path + ".fifo", path);
                    },
                    EINVAL, ENOTDIR},
        HostileCase{"socket", makeSocket, ENXIO, ENOTDIR},
        HostileCase{"linkToADevice", [](const std::string& path) { link("/dev/zero", path); },
                    EINVAL, ENOTDIR},
        HostileCase{"danglingLink", [](const std::string& path) { link("missing", path); }, ENOENT,
                    ENOENT},
        HostileCase{"loopingLink", [](const std::string& path) { link("entry", path); }, ELOOP,
                    ELOOP},
        HostileCase{"linkBelowAFile",
                    [](const std::string& path) {
                      makeSparseFile(path + ".file", 0);
                      link("entry.file/below", path);
                    },
                    ENOTDIR, ENOTDIR},
        HostileCase{"sparseFile",
                    [](const std::string& path) { makeSparseFile(path, off_t{1} << 33U); }, EFBIG,
                    ENOTDIR}),
    RowName());

/// Adds to the file at `path`, without putting another one in its place.
void append(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary | std::ios::app) << bytes;
}

TEST_F(ReadingPosixFiles, readsInPiecesWhatAFileGrowsBy) {
  const std::string path = directory.write("file", "123");
  const std::unique_ptr<FileContent> content = reader.open(path, 6);
  std::array<char, 100> room{};
  EXPECT_EQ(content->read(room.data(), room.size()), 3);
  EXPECT_EQ(content->read(room.data(), room.size()), 0);
  append(path, "456");
  EXPECT_EQ(content->read(room.data(), 2), 2);
  EXPECT_EQ(content->read(room.data(), room.size()), 1);
  EXPECT_EQ(room[0], '6');
  EXPECT_EQ(content->read(room.data(), room.size()), 0);
}

TEST_F(ReadingPosixFiles, readsInPiecesNoFileThatGrowsTooLong) {
  const std::string path = directory.write("file", "123");
  for (const std::size_t size : {1U, 2U, 100U}) {
    const std::unique_ptr<FileContent> content = reader.open(path, 3 * size);
    append(path, std::string(4 * size, 'x'));
    std::string room(size, '\0');
    std::size_t length = 0;
    EXPECT_EQ(errorCodeOf([&] {
                while (const std::size_t count = content->read(room.data(), size)) {
                  length += count;
                }
              }),
              EFBIG);
    EXPECT_LE(length, 3 * size);
    std::filesystem::resize_file(path, 3);
  }
}

TEST_F(ReadingPosixFiles, readsInPiecesWhatIsLeftOfAFile) {
  const std::string path = directory.write("file", "123456");
  const std::unique_ptr<FileContent> content = reader.open(path, plenty);
  char byte = '\0';
  EXPECT_EQ(content->read(&byte, 1), 1);
  std::filesystem::resize_file(path, 2);
  EXPECT_EQ(content->read(&byte, 1), 1);
  EXPECT_EQ(byte, '2');
  EXPECT_EQ(content->read(&byte, 1), 0);
}

TEST_F(ReadingPosixFiles, readsInPiecesTheFileThatWasThereWhenOpened) {
  const std::string path = directory.write("file", "1");
  const int descriptor = nextDescriptor();
  {
    const std::unique_ptr<FileContent> content = reader.open(path, plenty);
    directory.write("file", "2");
    char byte = '\0';
    EXPECT_EQ(content->read(&byte, 1), 1);
    EXPECT_EQ(byte, '1');
  }
  EXPECT_EQ(nextDescriptor(), descriptor);
}

TEST_F(ReadingPosixFiles, readsWhatASparseFileHasWithinTheLimit) {
  constexpr std::size_t length = 3'000'000;
  makeSparseFile(directory.path("sparse"), length);
  EXPECT_TRUE(reader.read(directory.path("sparse"), length) == std::string(length, '\0'));
}

TEST_F(ReadingPosixFiles, readsNothingThatTheUserMayNot) {
  directory.write("open/file", "content");
  directory.write("closed/file", "content");
  directory.write("file", "content");
  ASSERT_EQ(::chmod(directory.path("file").c_str(), 0), 0);
  ASSERT_EQ(::chmod(directory.path("closed").c_str(), 0), 0);
  ASSERT_EQ(::chmod(directory.path().c_str(), 0755), 0);
  const auto reading = [&](const std::string& name) {
    return resultForOrdinaryUser([&] { return errorCodeOfReading(directory.path(name)); });
  };
  const auto naming = [&](const std::string& name) {
    return resultForOrdinaryUser([&] { return errorCodeOfNames(directory.path(name)); });
  };
  EXPECT_EQ(reading("open/file"), 0);
  EXPECT_EQ(reading("file"), EACCES);
  EXPECT_EQ(reading("closed/file"), EACCES);
  EXPECT_EQ(naming("open"), 0);
  EXPECT_EQ(naming("closed"), EACCES);
  ASSERT_EQ(::chmod(directory.path("closed").c_str(), 0700), 0);
}

TEST_F(ReadingPosixFiles, readsAFileThatShrinksAndGrowsMeanwhile) {
  const std::string path = directory.write("file", "");
  const FileDescriptor file =
      FileDescriptor::adopt(::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
  const std::string bytes(600'000, 'x');
  const RepeatingThread disturbance([&] {
    require(::ftruncate(file.get(), 0) == 0, path);
    for (int count = 0; count < 3; ++count) {
      require(::write(file.get(), bytes.data(), bytes.size()) > 0, path);
    }
  });
  const std::size_t maximumLength = 2 * bytes.size();
  for (int round = 0; round < 200; ++round) {
    std::string content;
    const int error = errorCodeOf([&] { content = reader.read(path, maximumLength); });
    EXPECT_TRUE(error == 0 || error == EFBIG) << error;
    EXPECT_LE(content.size(), maximumLength);
    EXPECT_EQ(content.find_first_not_of('x'), std::string::npos);
  }
}

TEST_F(ReadingPosixFiles, tellsNamesByTheirBytesWhateverTheyAre) {
  const std::vector<std::string> names = {"\n", " ", ".\xFF", "B", "a", "a\xCC\x81", "é", "\xFF"};
  for (const std::string& name : names) {
    directory.write(name, "");
  }
  EXPECT_EQ(reader.entryNames(directory.path()), names);
}

TEST_F(ReadingPosixFiles, tellsOfEveryKindOfEntry) {
  ASSERT_EQ(::mkfifo(directory.path("fifo").c_str(), 0600), 0);
  link("missing", directory.path("dangling"));
  makeSocket(directory.path("socket"));
  directory.write("directory/below", "");
  EXPECT_EQ(reader.entryNames(directory.path()),
            (std::vector<std::string>{"dangling", "directory", "fifo", "socket"}));
}

TEST_F(ReadingPosixFiles, tellsMoreNamesThanTheSystemDoesAtATime) {
  std::vector<std::string> names;
  for (int number = 10'000; number < 13'000; ++number) {
    names.push_back("entry " + std::to_string(number));
    makeSparseFile(directory.path(names.back()), 0);
  }
  const int descriptor = nextDescriptor();
  EXPECT_EQ(reader.entryNames(directory.path()), names);
  EXPECT_EQ(nextDescriptor(), descriptor);
}

TEST_F(ReadingPosixFiles, tellsEachNameOnceThoughTheDirectoryChangesMeanwhile) {
  std::vector<std::string> lasting;
  for (int number = 1000; number < 1500; ++number) {
    lasting.push_back("lasting " + std::to_string(number));
    makeSparseFile(directory.path(lasting.back()), 0);
  }
  const std::string first = directory.path("moving 1");
  const std::string second = directory.path("moving 2");
  makeSparseFile(first, 0);
  const RepeatingThread disturbance([&] {
    std::filesystem::rename(first, second);
    std::filesystem::rename(second, first);
  });
  for (int round = 0; round < 200; ++round) {
    std::vector<std::string> names = reader.entryNames(directory.path());
    EXPECT_TRUE(std::ranges::is_sorted(names));
    EXPECT_EQ(std::ranges::adjacent_find(names), names.end());
    std::erase_if(names, [](const std::string& name) { return name.starts_with("moving"); });
    EXPECT_EQ(names, lasting);
  }
}

TEST_F(ReadingPosixFiles, tellsOfADirectoryThatVanished) {
  directory.write("gone/file", "");
  link("gone", directory.path("link"));
  std::filesystem::remove_all(directory.path("gone"));
  EXPECT_EQ(errorCodeOfNames(directory.path("link")), ENOENT);
  EXPECT_EQ(errorCodeOfReading(directory.path("link/file")), ENOENT);
}

}  // namespace
}  // namespace velmora
