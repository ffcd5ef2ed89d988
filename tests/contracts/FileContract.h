// What every reader and writer of files promises. A fixture provides:
//   const FileReader& reader();  FileWriter& writer();
//   std::string path(std::string_view name);   an absolute path in an empty directory
#pragma once

#include "platform/FileReader.h"
#include "platform/FileWriter.h"
#include "platform/PlatformError.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace velmora {

template <class Fixture>
class FileContract : public testing::Test {
 protected:
  /// The code of the PlatformError that `operation` raises; 0 without one.
  template <class Operation>
  int errorCodeOf(Operation operation) {
    try {
      operation();
    } catch (const PlatformError& error) {
      EXPECT_EQ(error.domain(), posixErrorDomain);
      return error.code();
    }
    return 0;
  }

  /// What `entryNames` tells of the directory `name`.
  std::vector<std::string> namesIn(std::string_view name) {
    return fixture.reader().entryNames(fixture.path(name));
  }

  /// What the file `name` of at most `maximumLength` bytes delivers, at most `size` bytes at a
  /// time.
  std::string contentInPieces(std::string_view name, std::size_t size,
                              std::size_t maximumLength = plenty) {
    const std::unique_ptr<FileContent> content =
        fixture.reader().open(fixture.path(name), maximumLength);
    std::string bytes;
    std::string room(size, '\0');
    while (const std::size_t count = content->read(room.data(), size)) {
      EXPECT_LE(count, size);
      bytes.append(room, 0, count);
    }
    // Also asked again, that is the end.
    EXPECT_EQ(content->read(room.data(), size), 0);
    return bytes;
  }

  /// More than any file of these tests has.
  static constexpr std::size_t plenty = 1000;

  Fixture fixture;
};

TYPED_TEST_SUITE_P(FileContract);

TYPED_TEST_P(FileContract, nothingIsThereAtFirst) {
  const std::string path = this->fixture.path("missing");
  EXPECT_FALSE(this->fixture.reader().exists(path));
  EXPECT_FALSE(this->fixture.reader().isDirectory(path));
  EXPECT_EQ(this->errorCodeOf([&] { this->fixture.reader().read(path, this->plenty); }), ENOENT);
  EXPECT_EQ(this->errorCodeOf([&] { this->fixture.reader().open(path, this->plenty); }), ENOENT);
  EXPECT_EQ(this->errorCodeOf([&] { this->fixture.reader().entryNames(path); }), ENOENT);
}

TYPED_TEST_P(FileContract, makesEveryMissingDirectory) {
  this->fixture.writer().createDirectories(this->fixture.path("a/b/c"));
  EXPECT_TRUE(this->fixture.reader().isDirectory(this->fixture.path("a")));
  EXPECT_TRUE(this->fixture.reader().isDirectory(this->fixture.path("a/b/c")));
  EXPECT_TRUE(this->fixture.reader().exists(this->fixture.path("a/b/c")));
}

TYPED_TEST_P(FileContract, acceptsAnExistingDirectory) {
  const std::string path = this->fixture.path("a");
  this->fixture.writer().createDirectories(path);
  EXPECT_NO_THROW(this->fixture.writer().createDirectories(path));
}

TYPED_TEST_P(FileContract, readsBackWhatItWrote) {
  using std::string_literals::operator""s;
  const std::string bytes = "{\n\"é\"\0}"s;
  this->fixture.writer().writeAtomically(this->fixture.path("file.json"), bytes);
  EXPECT_TRUE(this->fixture.reader().exists(this->fixture.path("file.json")));
  EXPECT_FALSE(this->fixture.reader().isDirectory(this->fixture.path("file.json")));
  EXPECT_EQ(this->fixture.reader().read(this->fixture.path("file.json"), this->plenty), bytes);
}

TYPED_TEST_P(FileContract, writesAnEmptyFile) {
  this->fixture.writer().writeAtomically(this->fixture.path("empty"), "");
  EXPECT_EQ(this->fixture.reader().read(this->fixture.path("empty"), this->plenty), "");
  EXPECT_EQ(this->fixture.reader().read(this->fixture.path("empty"), 0), "");
}

TYPED_TEST_P(FileContract, makesNoDirectoryInAFilesPlace) {
  this->fixture.writer().writeAtomically(this->fixture.path("file"), "");
  EXPECT_EQ(this->errorCodeOf(
                [&] { this->fixture.writer().createDirectories(this->fixture.path("file")); }),
            EEXIST);
}

TYPED_TEST_P(FileContract, writesNoFileWithoutItsDirectory) {
  EXPECT_EQ(this->errorCodeOf([&] {
    this->fixture.writer().writeAtomically(this->fixture.path("missing/file"), "");
  }),
            ENOENT);
}

TYPED_TEST_P(FileContract, readsNoDirectory) {
  this->fixture.writer().createDirectories(this->fixture.path("a"));
  for (const std::size_t maximumLength : {std::size_t{0}, this->plenty}) {
    EXPECT_EQ(this->errorCodeOf(
                  [&] { this->fixture.reader().read(this->fixture.path("a"), maximumLength); }),
              EISDIR);
    EXPECT_EQ(this->errorCodeOf(
                  [&] { this->fixture.reader().open(this->fixture.path("a"), maximumLength); }),
              EISDIR);
  }
}

TYPED_TEST_P(FileContract, readsUpToTheMaximumLengthOnly) {
  const std::string path = this->fixture.path("file");
  this->fixture.writer().writeAtomically(path, "12345");
  EXPECT_EQ(this->fixture.reader().read(path, 6), "12345");
  EXPECT_EQ(this->fixture.reader().read(path, 5), "12345");
  for (const std::size_t maximumLength : {4U, 1U, 0U}) {
    EXPECT_EQ(this->errorCodeOf([&] { this->fixture.reader().read(path, maximumLength); }), EFBIG)
        << maximumLength;
    EXPECT_EQ(this->errorCodeOf([&] { this->fixture.reader().open(path, maximumLength); }), EFBIG)
        << maximumLength;
  }
  EXPECT_EQ(this->contentInPieces("file", 2, 5), "12345");
}

TYPED_TEST_P(FileContract, readsInPiecesOfAnySize) {
  std::string bytes;
  for (int byte = 0; byte < 500; ++byte) {
    bytes += static_cast<char>(byte);
  }
  this->fixture.writer().writeAtomically(this->fixture.path("file"), bytes);
  for (const std::size_t size : {1U, 2U, 7U, 499U, 500U, 501U, 10'000U}) {
    EXPECT_EQ(this->contentInPieces("file", size), bytes) << size;
  }
  this->fixture.writer().writeAtomically(this->fixture.path("empty"), "");
  EXPECT_EQ(this->contentInPieces("empty", 1), "");
  EXPECT_EQ(this->contentInPieces("empty", 1, 0), "");
}

TYPED_TEST_P(FileContract, readsTwoFilesInPiecesAtATime) {
  this->fixture.writer().writeAtomically(this->fixture.path("letters"), "abc");
  this->fixture.writer().writeAtomically(this->fixture.path("digits"), "123");
  const auto letters = this->fixture.reader().open(this->fixture.path("letters"), this->plenty);
  const auto digits = this->fixture.reader().open(this->fixture.path("digits"), this->plenty);
  std::string bytes;
  for (int count = 0; count < 3; ++count) {
    for (FileContent* const content : {letters.get(), digits.get()}) {
      char byte = '\0';
      EXPECT_EQ(content->read(&byte, 1), 1);
      bytes += byte;
    }
  }
  EXPECT_EQ(bytes, "a1b2c3");
}

TYPED_TEST_P(FileContract, tellsTheNamesInADirectorySorted) {
  this->fixture.writer().createDirectories(this->fixture.path("a/directory/below"));
  this->fixture.writer().createDirectories(this->fixture.path("ab/beside"));
  for (const std::string name : {"é", "b", "B", ".hidden", "b.json", "..."}) {
    this->fixture.writer().writeAtomically(this->fixture.path("a/" + name), "");
  }
  const std::vector<std::string> names = {"...", ".hidden", "B", "b", "b.json", "directory", "é"};
  EXPECT_EQ(this->namesIn("a"), names);
  EXPECT_EQ(this->namesIn("a/directory"), std::vector<std::string>{"below"});
  EXPECT_TRUE(this->namesIn("a/directory/below").empty());
}

TYPED_TEST_P(FileContract, tellsNoNamesInAFile) {
  this->fixture.writer().writeAtomically(this->fixture.path("file"), "");
  EXPECT_EQ(this->errorCodeOf([&] { this->namesIn("file"); }), ENOTDIR);
}

REGISTER_TYPED_TEST_SUITE_P(FileContract, nothingIsThereAtFirst, makesEveryMissingDirectory,
                            acceptsAnExistingDirectory, readsBackWhatItWrote, writesAnEmptyFile,
                            makesNoDirectoryInAFilesPlace, writesNoFileWithoutItsDirectory,
                            readsNoDirectory, readsUpToTheMaximumLengthOnly, readsInPiecesOfAnySize,
                            readsTwoFilesInPiecesAtATime, tellsTheNamesInADirectorySorted,
                            tellsNoNamesInAFile);

}  // namespace velmora
