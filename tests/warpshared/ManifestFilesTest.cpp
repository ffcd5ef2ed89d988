// Manifests read from files, which may be anything and change at any time.

#include "json/streaming/ChunkedDocument.h"
#include "platform/FileReader.h"
#include "platform/PlatformError.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/support/ErrorCode.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/warpshared/PlainManifests.h"
#include "tests/warpshared/WholeReadCounter.h"
#include "warpshared/reading/ManifestDecoding.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::internal {
namespace {

/// So many entries that the file is read in chunks.
constexpr std::size_t longCount = 1200;

std::string longManifest(const JSONStyle& style = jsonStyles[0]) {
  return plainManifestText(
      longCount, [](std::size_t number) { return "/a/" + std::to_string(number); }, style);
}

TEST(ManifestFiles, areReadAtAnyLengthInAnyStyle) {
  const ScratchDirectory directory;
  const PosixFileReader realFiles;
  const WholeReadCounter files(realFiles);
  ManifestDecoder decoder;
  for (const JSONStyle& style : jsonStyles) {
    const std::string small = manifestDocument().text(style);
    const std::string large = longManifest(style);
    EXPECT_GT(large.size(), 2 * documentChunkLength);
    for (const std::string& text : {small, large, small}) {
      const std::string path = directory.write("manifest.json", text);
      std::string bytes = text;
      EXPECT_EQ(decoder.read(path, files), decodedManifest(text)) << style.name;
      EXPECT_EQ(decoder.readSummary(path, files), ManifestDecoder().decodeSummary(bytes));
    }
  }
  EXPECT_EQ(files.count(), 0);
}

TEST(ManifestFiles, areAcceptedWithoutBeingReadAsAWhole) {
  const ScratchDirectory directory;
  const PosixFileReader realFiles;
  const WholeReadCounter files(realFiles);
  ManifestDecoder decoder;
  const std::string valid = directory.write("valid.json", longManifest());
  EXPECT_EQ(decoder.readSummaryIfValid(valid, files).value(), decoder.readSummary(valid, files));
  const std::string invalid = directory.write("invalid.json", longManifest() + "x");
  EXPECT_EQ(decoder.readSummaryIfValid(invalid, files), std::nullopt);
  EXPECT_EQ(files.count(), 0);
  EXPECT_EQ(errorCodeOf([&] { return decoder.readSummaryIfValid("/nowhere", files); }), ENOENT);
}

TEST(ManifestFiles, areNotDiagnosedBeyondALength) {
  const ScratchDirectory directory;
  const PosixFileReader files;
  ManifestDecoder decoder;
  const std::string text = longManifest() + "x";
  const std::string path = directory.write("manifest.json", text);
  const auto verdict = [&](std::size_t maxLength) {
    return verdictOf([&] { static_cast<void>(decoder.readSummary(path, files, maxLength)); });
  };
  EXPECT_EQ(verdict(text.size()), "dataCorrupted at : Something follows the document's value.");
  EXPECT_EQ(verdict(text.size() - 1),
            "dataCorrupted at : The file is no valid manifest. It is too long to look for its "
            "fault.");
  const std::string valid = directory.write("valid.json", longManifest());
  EXPECT_EQ(decoder.readSummary(valid, files, 1).entryCount, longCount);
}

TEST(ManifestFiles, areRefusedForTheSameReasonsAsDocuments) {
  const ScratchDirectory directory;
  const PosixFileReader realFiles;
  const WholeReadCounter files(realFiles);
  ManifestDecoder decoder;
  std::size_t count = 0;
  for (const std::string& text :
       {std::string(), std::string("\n\n"), std::string("{}"), std::string("[1,]"),
        longManifest().substr(0, 100'000), longManifest() + "x", "\xFF" + longManifest(),
        longManifest() + "\n\"a\nb\""}) {
    const std::string path = directory.write("manifest.json", text);
    const std::string verdict = verdictOf([&] { static_cast<void>(decodedManifest(text)); });
    EXPECT_NE(verdict, valid);
    EXPECT_EQ(verdictOf([&] { static_cast<void>(decoder.read(path, files)); }), verdict);
    EXPECT_EQ(verdictOf([&] { static_cast<void>(decoder.readSummary(path, files)); }), verdict);
    EXPECT_EQ(files.count(), count += 2);
  }
}

TEST(ManifestFiles, raiseTheErrorOfTheFile) {
  struct {
    const char* name;
    void (*make)(const std::string& path);
    int error;
  } const rows[] = {
      {"missing", [](const std::string&) {}, ENOENT},
      {"directory", [](auto& path) { require(::mkdir(path.c_str(), 0700) == 0, path); }, EISDIR},
      {"fifo", [](auto& path) { require(::mkfifo(path.c_str(), 0600) == 0, path); }, EINVAL},
      {"loopingLink", [](auto& path) { link("entry", path); }, ELOOP},
      {"tooLong",
       [](auto& path) {
         makeSparseFile(path, static_cast<off_t>(maxSharedWarpManifestLength) + 1);
       },
       EFBIG},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const ScratchDirectory directory;
    const PosixFileReader realFiles;
    const WholeReadCounter files(realFiles);
    const std::string path = directory.path("entry");
    row.make(path);
    ManifestDecoder decoder;
    EXPECT_EQ(errorCodeOf([&] { return decoder.read(path, files); }), row.error);
    EXPECT_EQ(errorCodeOf([&] { return decoder.readSummary(path, files); }), row.error);
    EXPECT_EQ(files.count(), 0);
    EXPECT_EQ(decoder.read(directory.write("other", longManifest()), files),
              decodedManifest(longManifest()));
  }
}

/// Delivers a text in portions, and then raises the error, if there is one.
class TextContent final : public FileContent {
 public:
  TextContent(std::string text, int error) : text_(std::move(text)), error_(error) {}

  std::size_t read(char* room, std::size_t size) override {
    if (text_.empty() && error_ != 0) {
      throw posixError(error_);
    }
    const std::size_t count = text_.copy(room, std::min<std::size_t>(size, 1000));
    text_.erase(0, count);
    return count;
  }

 private:
  std::string text_;
  int error_;
};

/// A text, and the error after it, if there is one.
struct Reading {
  std::string text;
  int error = 0;
};

/// A file with one content for a reading in chunks, and another for a reading as a whole.
class ChangingFile final : public FileReader {
 public:
  ChangingFile(Reading inChunks, Reading asAWhole)
      : inChunks_(std::move(inChunks)), asAWhole_(std::move(asAWhole)) {}

  bool exists(std::string_view) const override { return true; }
  bool isDirectory(std::string_view) const override { return false; }
  std::vector<std::string> entryNames(std::string_view, std::size_t) const override {
    throw posixError(ENOTDIR);
  }

  std::string read(std::string_view, std::size_t) const override {
    if (asAWhole_.error != 0) {
      throw posixError(asAWhole_.error);
    }
    return asAWhole_.text;
  }

  std::unique_ptr<FileContent> open(std::string_view, std::size_t) const override {
    return std::make_unique<TextContent>(inChunks_.text, inChunks_.error);
  }

 private:
  Reading inChunks_;
  Reading asAWhole_;
};

TEST(ManifestFiles, haveTheVerdictOfTheLastReading) {
  const Reading whole = {longManifest()};
  const Reading refused = {longManifest() + "x"};
  const std::string cut = longManifest().substr(0, 90'000);
  const std::string beginning = R"({"more":1,"version":)";
  const std::string faultOfTheBeginning =
      verdictOf([&] { static_cast<void>(decodedManifest(beginning)); });
  const std::string noVersion = "keyNotFound at /version: The key \"version\" is missing.";
  struct {
    const char* name;
    Reading inChunks;
    Reading asAWhole;
    /// The error or verdict of the second reading, or the error of the first reading.
    int error = 0;
    std::string verdict = std::string(valid);
    std::size_t wholeReadCount = 0;
  } const rows[] = {
      {"validAtFirst", whole, {"", EIO}},
      {"mended", refused, whole, 0, "valid", 1},
      {"cutAtFirst", {cut}, whole, 0, "valid", 1},
      {"emptyAtFirst", {""}, whole, 0, "valid", 1},
      {"broken", refused, {"{}"}, 0, noVersion, 1},
      {"cutAfterTheFirstReading", refused, {beginning}, 0, faultOfTheBeginning, 1},
      {"growsTooLong", {cut, EFBIG}, whole, EFBIG},
      {"growsTooLongAfterTheManifest", {longManifest(), EFBIG}, whole, EFBIG},
      {"growsTooLongAtOnce", {"", EFBIG}, whole, EFBIG},
      {"failsInTheMiddle", {cut, EIO}, whole, EIO},
      {"grownTooLongSince", refused, {"", EFBIG}, EFBIG, "valid", 1},
      {"goneSince", refused, {"", ENOENT}, ENOENT, "valid", 1},
      {"directorySince", refused, {"", EISDIR}, EISDIR, "valid", 1},
  };
  const VelmoraWarpSharedManifest manifest = decodedManifest(longManifest());
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const ChangingFile file(row.inChunks, row.asAWhole);
    const WholeReadCounter files(file);
    ManifestDecoder decoder;
    std::string verdict(valid);
    const int error = errorCodeOf(
        [&] { verdict = verdictOf([&] { EXPECT_EQ(decoder.read("/file", files), manifest); }); });
    EXPECT_EQ(error, row.error);
    EXPECT_EQ(verdict, row.verdict);
    EXPECT_EQ(files.count(), row.wholeReadCount);
    // The decoder reads the next file independently of this one.
    EXPECT_EQ(decoder.read("/other", ChangingFile(whole, {"", EIO})), manifest);
  }
}

}  // namespace
}  // namespace velmora::internal
