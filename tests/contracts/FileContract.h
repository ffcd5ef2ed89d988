// The contract of every FileReader and FileWriter. Instantiated with an adapter for each
// implementation.
#pragma once

#include "platform/FileReader.h"
#include "platform/FileWriter.h"
#include "platform/PlatformError.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// An adapter has
///   const FileReader& reader();
///   FileWriter& writer();
///   std::string path(std::string_view name);   an absolute path in an empty directory
template <class Adapter>
class FileContract : public testing::Test {
 protected:
  /// More than the length of any file in these tests.
  static constexpr std::size_t plenty = 1000;

  const FileReader& reader() { return adapter_.reader(); }
  std::string path(std::string_view name) { return adapter_.path(name); }
  void write(std::string_view name, std::string_view bytes) {
    adapter_.writer().writeAtomically(path(name), bytes);
  }
  void makeDirectories(std::string_view name) { adapter_.writer().createDirectories(path(name)); }

  template <class Operation>
  void expectError(int code, Operation operation) {
    try {
      operation();
      ADD_FAILURE() << "no error " << code;
    } catch (const PlatformError& error) {
      EXPECT_EQ(error.domain(), posixErrorDomain);
      EXPECT_EQ(error.code(), code);
    }
  }

  /// Expects this error from reading the file as a whole and from opening it.
  void expectUnreadable(std::string_view name, std::size_t maxLength, int code) {
    SCOPED_TRACE(std::string(name) + " of at most " + std::to_string(maxLength));
    expectError(code, [&] { reader().read(path(name), maxLength); });
    expectError(code, [&] { reader().open(path(name), maxLength); });
  }

  /// The content of the file `name`, read at most `size` bytes at a time.
  std::string contentInPieces(std::string_view name, std::size_t size,
                              std::size_t maxLength = plenty) {
    const std::unique_ptr<FileContent> content = reader().open(path(name), maxLength);
    std::string bytes;
    std::string room(size, '\0');
    while (const std::size_t count = content->read(room.data(), size)) {
      EXPECT_LE(count, size);
      bytes.append(room, 0, count);
    }
    // A read at the end delivers nothing again.
    EXPECT_EQ(content->read(room.data(), size), 0);
    return bytes;
  }

 private:
  Adapter adapter_;
};

TYPED_TEST_SUITE_P(FileContract);

TYPED_TEST_P(FileContract, nothingExistsAtFirst) {
  EXPECT_FALSE(this->reader().exists(this->path("missing")));
  EXPECT_FALSE(this->reader().isDirectory(this->path("missing")));
  this->expectUnreadable("missing", this->plenty, ENOENT);
  this->expectError(ENOENT,
                    [&] { this->reader().entryNames(this->path("missing"), unlimitedNameCount); });
  this->expectError(ENOENT, [&] { this->write("missing/file", ""); });
}

TYPED_TEST_P(FileContract, createsEveryMissingDirectory) {
  for (int time = 0; time < 2; ++time) {
    this->makeDirectories("a/b/c");
    EXPECT_TRUE(this->reader().isDirectory(this->path("a")));
    EXPECT_TRUE(this->reader().isDirectory(this->path("a/b/c")));
    EXPECT_TRUE(this->reader().exists(this->path("a/b/c")));
  }
  for (const std::size_t maxLength : {std::size_t{0}, this->plenty}) {
    this->expectUnreadable("a", maxLength, EISDIR);
  }
}

TYPED_TEST_P(FileContract, readsTheWrittenBytes) {
  using std::string_literals::operator""s;
  for (const std::string& bytes : {"{\n\"é\"\0}"s, ""s}) {
    this->write("file", bytes);
    EXPECT_TRUE(this->reader().exists(this->path("file")));
    EXPECT_FALSE(this->reader().isDirectory(this->path("file")));
    EXPECT_EQ(this->reader().read(this->path("file"), this->plenty), bytes);
    EXPECT_EQ(this->reader().read(this->path("file"), bytes.size()), bytes);
  }
}

TYPED_TEST_P(FileContract, refusesAFileInPlaceOfADirectory) {
  this->write("file", "");
  this->expectError(EEXIST, [&] { this->makeDirectories("file"); });
  this->expectError(ENOTDIR,
                    [&] { this->reader().entryNames(this->path("file"), unlimitedNameCount); });
}

TYPED_TEST_P(FileContract, readsUpToTheMaximumLengthOnly) {
  this->write("file", "12345");
  EXPECT_EQ(this->reader().read(this->path("file"), 6), "12345");
  EXPECT_EQ(this->reader().read(this->path("file"), 5), "12345");
  EXPECT_EQ(this->contentInPieces("file", 2, 5), "12345");
  for (const std::size_t maxLength : {4U, 1U, 0U}) {
    this->expectUnreadable("file", maxLength, EFBIG);
  }
}

TYPED_TEST_P(FileContract, readsInPiecesOfAnySize) {
  std::string bytes;
  for (int byte = 0; byte < 500; ++byte) {
    bytes += static_cast<char>(byte);
  }
  this->write("file", bytes);
  for (const std::size_t size : {1U, 2U, 7U, 499U, 500U, 501U, 10'000U}) {
    EXPECT_EQ(this->contentInPieces("file", size), bytes) << size;
  }
  this->write("empty", "");
  EXPECT_EQ(this->contentInPieces("empty", 1), "");
  EXPECT_EQ(this->contentInPieces("empty", 1, 0), "");
}

TYPED_TEST_P(FileContract, readsTwoOpenFilesInTurn) {
  this->write("letters", "abc");
  this->write("digits", "123");
  const auto letters = this->reader().open(this->path("letters"), this->plenty);
  const auto digits = this->reader().open(this->path("digits"), this->plenty);
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

TYPED_TEST_P(FileContract, listsTheNamesInADirectorySorted) {
  using Names = std::vector<std::string>;
  this->makeDirectories("a/directory/below");
  this->makeDirectories("ab/beside");
  for (const std::string name : {"é", "b", "B", ".hidden", "b.json", "..."}) {
    this->write("a/" + name, "");
  }
  EXPECT_EQ(this->reader().entryNames(this->path("a"), unlimitedNameCount),
            (Names{"...", ".hidden", "B", "b", "b.json", "directory", "é"}));
  EXPECT_EQ(this->reader().entryNames(this->path("a/directory"), unlimitedNameCount),
            Names{"below"});
  EXPECT_EQ(this->reader().entryNames(this->path("a/directory/below"), unlimitedNameCount),
            Names());
  EXPECT_EQ(this->reader().entryNames(this->path("a"), 7).size(), 7);
  this->expectError(EFBIG, [&] { this->reader().entryNames(this->path("a"), 6); });
}

REGISTER_TYPED_TEST_SUITE_P(FileContract, nothingExistsAtFirst, createsEveryMissingDirectory,
                            readsTheWrittenBytes, refusesAFileInPlaceOfADirectory,
                            readsUpToTheMaximumLengthOnly, readsInPiecesOfAnySize,
                            readsTwoOpenFilesInTurn, listsTheNamesInADirectorySorted);

}  // namespace velmora
