// What every reader and writer of files promises. A fixture provides:
//   const FileReader& reader();  FileWriter& writer();
//   std::string path(std::string_view name);   an absolute path in an empty directory
#pragma once

#include "platform/FileReader.h"
#include "platform/FileWriter.h"
#include "platform/PlatformError.h"

#include <gtest/gtest.h>

#include <string>

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

  Fixture fixture;
};

TYPED_TEST_SUITE_P(FileContract);

TYPED_TEST_P(FileContract, nothingIsThereAtFirst) {
  const std::string path = this->fixture.path("missing");
  EXPECT_FALSE(this->fixture.reader().exists(path));
  EXPECT_FALSE(this->fixture.reader().isDirectory(path));
  EXPECT_EQ(this->errorCodeOf([&] { this->fixture.reader().read(path); }), ENOENT);
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
  EXPECT_EQ(this->fixture.reader().read(this->fixture.path("file.json")), bytes);
}

TYPED_TEST_P(FileContract, writesAnEmptyFile) {
  this->fixture.writer().writeAtomically(this->fixture.path("empty"), "");
  EXPECT_EQ(this->fixture.reader().read(this->fixture.path("empty")), "");
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
  EXPECT_EQ(this->errorCodeOf([&] { this->fixture.reader().read(this->fixture.path("a")); }),
            EISDIR);
}

REGISTER_TYPED_TEST_SUITE_P(FileContract, nothingIsThereAtFirst, makesEveryMissingDirectory,
                            acceptsAnExistingDirectory, readsBackWhatItWrote, writesAnEmptyFile,
                            makesNoDirectoryInAFilesPlace, writesNoFileWithoutItsDirectory,
                            readsNoDirectory);

}  // namespace velmora
