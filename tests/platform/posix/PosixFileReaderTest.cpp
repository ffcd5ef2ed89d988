#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/support/ErrorCode.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using std::string_literals::operator""s;

/// More than the length of any file in these tests, except those that must be too long.
constexpr std::size_t plenty = 16 * 1024 * 1024;

/// The number of the next opened descriptor. It grows if a descriptor leaks.
int nextDescriptor() {
  return FileDescriptor::adopt(::open("/dev/null", O_RDONLY | O_CLOEXEC)).get();
}

class ReadingPosixFiles : public testing::Test {
 protected:
  int errorCodeOfReading(const std::string& path) {
    return errorCodeOf([&] { return reader.read(path, plenty); });
  }

  int errorCodeOfNames(const std::string& path) {
    return errorCodeOf([&] { return reader.entryNames(path, unlimitedNameCount); });
  }

  /// Creates more names than one system call returns for a directory. Returns them sorted.
  std::vector<std::string> makeFilesWithLongNames() {
    std::vector<std::string> names;
    for (int number = 100; number < 400; ++number) {
      names.push_back(std::string(200, 'x') + std::to_string(number));
      makeSparseFile(directory.path(names.back()), 0);
    }
    return names;
  }

  ScratchDirectory directory;
  PosixFileReader reader;
};

TEST_F(ReadingPosixFiles, readsAFileOfSeveralPieces) {
  const std::string bytes = std::string(1'000'000, 'x') + "end";
  directory.write("file", bytes);
  EXPECT_TRUE(reader.read(directory.path("file"), bytes.size()) == bytes);
}

TEST_F(ReadingPosixFiles, followsLinksAndNeverWaits) {
  directory.write("file", "content");
  directory.write("directory/below", "");
  require(::mkfifo(directory.path("fifo").c_str(), 0600) == 0, "fifo");
  makeSocket(directory.path("socket"));
  makeSparseFile(directory.path("sparse"), off_t{1} << 33U);
  for (const auto& [name, target] :
       {std::pair("link", "file"), std::pair("linkToADirectory", "directory"),
        std::pair("linkToAFIFO", "fifo"), std::pair("linkToADevice", "/dev/zero"),
        std::pair("dangling", "missing"), std::pair("loop", "loop"),
        std::pair("linkBelowAFile", "file/below")}) {
    link(target, directory.path(name));
  }
  const struct {
    std::string name;
    bool exists;
    bool isDirectory;
    int readingError;
    int namesError;
  } rows[] = {
      {"link", true, false, 0, ENOTDIR},
      {"linkToADirectory", true, true, EISDIR, 0},
      {"fifo", true, false, EINVAL, ENOTDIR},
      {"linkToAFIFO", true, false, EINVAL, ENOTDIR},
      {"linkToADevice", true, false, EINVAL, ENOTDIR},
      {"socket", true, false, ENXIO, ENOTDIR},
      {"sparse", true, false, EFBIG, ENOTDIR},
      {"dangling", false, false, ENOENT, ENOENT},
      {"dangling/file", false, false, ENOENT, ENOENT},
      {"loop", false, false, ELOOP, ELOOP},
      {"linkBelowAFile", false, false, ENOTDIR, ENOTDIR},
      {"file\0.json"s, false, false, ENOENT, ENOENT},
      {"directory\0x"s, false, false, ENOENT, ENOENT},
      {std::string(5000, 'x'), false, false, ENAMETOOLONG, ENAMETOOLONG},
  };
  const int descriptor = nextDescriptor();
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::string path = directory.path(row.name);
    EXPECT_EQ(reader.exists(path), row.exists);
    EXPECT_EQ(reader.isDirectory(path), row.isDirectory);
    EXPECT_EQ(errorCodeOfReading(path), row.readingError);
    EXPECT_EQ(errorCodeOf([&] { return reader.open(path, plenty); }), row.readingError);
    EXPECT_EQ(errorCodeOfNames(path), row.namesError);
    EXPECT_EQ(nextDescriptor(), descriptor);
  }
  EXPECT_EQ(reader.read(directory.path("link"), plenty), "content");
  EXPECT_EQ(reader.entryNames(directory.path("linkToADirectory"), unlimitedNameCount),
            std::vector<std::string>{"below"});
}

/// Appends to the file at `path` in place.
void append(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary | std::ios::app) << bytes;
}

TEST_F(ReadingPosixFiles, readsInPiecesTheBytesAppendedMeanwhile) {
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

TEST_F(ReadingPosixFiles, refusesInPiecesAFileThatGrowsTooLong) {
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

TEST_F(ReadingPosixFiles, readsInPiecesTheRestOfATruncatedFile) {
  const std::string path = directory.write("file", "123456");
  const std::unique_ptr<FileContent> content = reader.open(path, plenty);
  char byte = '\0';
  EXPECT_EQ(content->read(&byte, 1), 1);
  std::filesystem::resize_file(path, 2);
  EXPECT_EQ(content->read(&byte, 1), 1);
  EXPECT_EQ(byte, '2');
  EXPECT_EQ(content->read(&byte, 1), 0);
}

TEST_F(ReadingPosixFiles, readsInPiecesTheOpenedFileAfterItsReplacement) {
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

TEST_F(ReadingPosixFiles, readsNothingWithoutPermission) {
  directory.write("open/file", "content");
  directory.write("closed/file", "content");
  directory.write("file", "content");
  for (const auto& [name, mode] :
       {std::pair("file", 0), std::pair("closed", 0), std::pair("", 0755)}) {
    ASSERT_EQ(::chmod(directory.path(name).c_str(), static_cast<mode_t>(mode)), 0);
  }
  const struct {
    std::string name;
    int readingError;
    int namesError;
  } rows[] = {
      {"open/file", 0, ENOTDIR}, {"file", EACCES, ENOTDIR},  {"closed/file", EACCES, EACCES},
      {"open", EISDIR, 0},       {"closed", EACCES, EACCES},
  };
  for (const auto& row : rows) {
    const std::string path = directory.path(row.name);
    EXPECT_EQ(resultForOrdinaryUser([&] { return errorCodeOfReading(path); }), row.readingError)
        << path;
    EXPECT_EQ(resultForOrdinaryUser([&] { return errorCodeOfNames(path); }), row.namesError)
        << path;
  }
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
  const std::size_t maxLength = 2 * bytes.size();
  for (int round = 0; round < 200; ++round) {
    std::string content;
    const int error = errorCodeOf([&] { content = reader.read(path, maxLength); });
    EXPECT_TRUE(error == 0 || error == EFBIG) << error;
    EXPECT_LE(content.size(), maxLength);
    EXPECT_EQ(content.find_first_not_of('x'), std::string::npos);
  }
}

TEST_F(ReadingPosixFiles, listsNamesOfEveryFileKindInByteOrder) {
  for (const char* name : {"\n", " ", ".\xFF", "B", "a", "a\xCC\x81", "é", "\xFF"}) {
    directory.write(name, "");
  }
  require(::mkfifo(directory.path("fifo").c_str(), 0600) == 0, "fifo");
  link("missing", directory.path("dangling"));
  makeSocket(directory.path("socket"));
  directory.write("directory/below", "");
  EXPECT_EQ(reader.entryNames(directory.path(), unlimitedNameCount),
            (std::vector<std::string>{"\n", " ", ".\xFF", "B", "a", "a\xCC\x81", "dangling",
                                      "directory", "fifo", "socket", "é", "\xFF"}));
}

TEST_F(ReadingPosixFiles, listsMoreNamesThanOneSystemCallReturns) {
  const std::vector<std::string> names = makeFilesWithLongNames();
  const int descriptor = nextDescriptor();
  EXPECT_EQ(reader.entryNames(directory.path(), unlimitedNameCount), names);
  EXPECT_EQ(nextDescriptor(), descriptor);
}

TEST_F(ReadingPosixFiles, listsEachNameOnceWhileTheDirectoryChanges) {
  const std::vector<std::string> lasting = makeFilesWithLongNames();
  const std::string first = directory.path("moving 1");
  const std::string second = directory.path("moving 2");
  makeSparseFile(first, 0);
  const RepeatingThread disturbance([&] {
    std::filesystem::rename(first, second);
    std::filesystem::rename(second, first);
  });
  for (int round = 0; round < 200; ++round) {
    std::vector<std::string> names = reader.entryNames(directory.path(), unlimitedNameCount);
    EXPECT_TRUE(std::ranges::is_sorted(names));
    EXPECT_EQ(std::ranges::adjacent_find(names), names.end());
    std::erase_if(names, [](const std::string& name) { return name.starts_with("moving"); });
    EXPECT_EQ(names, lasting);
  }
}

}  // namespace
}  // namespace velmora
