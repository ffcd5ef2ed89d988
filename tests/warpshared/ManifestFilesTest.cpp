// Manifests read from files, which may be anything and change at any time.

#include "platform/FileReader.h"
#include "platform/PlatformError.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/RowName.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/warpshared/PlainManifests.h"
#include "tests/warpshared/SharedWarpDocuments.h"
#include "warpshared/ManifestDecoding.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

VelmoraWarpSharedManifest decoded(std::string bytes) { return ManifestDecoder().decode(bytes); }

/// The code of the PlatformError that `operation` raises; 0 without one.
int errorCodeOf(const std::function<void()>& operation) {
  try {
    operation();
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.domain(), posixErrorDomain);
    return error.code();
  }
  return 0;
}

/// So many that they are read in pieces.
constexpr std::size_t longCount = 1200;

std::string longManifest(const JSONStyle& style = jsonStyles[0]) {
  return plainManifestText(
      longCount, [](std::size_t number) { return "/a/" + std::to_string(number); }, style);
}

std::string oddManifest() { return "{\"more\":1," + longManifest().substr(1); }

TEST(ManifestFiles, areReadWhateverTheirLengthAndStyle) {
  const ScratchDirectory directory;
  const PosixFileReader files;
  ManifestDecoder decoder;
  for (const JSONStyle& style : jsonStyles) {
    const std::string small = manifestDocument().text(style);
    const std::string large = longManifest(style);
    EXPECT_GT(large.size(), 2 * documentPieceLength);
    for (const std::string& text : {small, large, small}) {
      const std::string path = directory.write("manifest.json", text);
      std::string bytes = text;
      EXPECT_EQ(decoder.read(path, files), decoded(text)) << style.name;
      EXPECT_EQ(decoder.readSummary(path, files), ManifestDecoder().decodeSummary(bytes));
    }
  }
  EXPECT_EQ(decoder.reconsideredCount(), 0);
}

TEST(ManifestFiles, areReadAgainWhenTheyAreOdd) {
  const ScratchDirectory directory;
  const PosixFileReader files;
  ManifestDecoder decoder;
  const std::string path = directory.write("manifest.json", oddManifest());
  EXPECT_EQ(decoder.read(path, files), decoded(longManifest()));
  EXPECT_EQ(decoder.readSummary(path, files).entryCount, longCount);
  EXPECT_EQ(decoder.reconsideredCount(), 2);
}

TEST(ManifestFiles, areRefusedForTheSameReasonsAsDocuments) {
  const ScratchDirectory directory;
  const PosixFileReader files;
  ManifestDecoder decoder;
  std::size_t count = 0;
  for (const std::string& text :
       {std::string(), std::string("\n\n"), std::string("{}"), std::string("[1,]"),
        longManifest().substr(0, 100'000), longManifest() + "x", "\xFF" + longManifest(),
        longManifest() + "\n\"a\nb\""}) {
    const std::string path = directory.write("manifest.json", text);
    const Verdict verdict = verdictOf([&] { static_cast<void>(decoded(text)); });
    EXPECT_NE(verdict, valid);
    EXPECT_EQ(verdictOf([&] { static_cast<void>(decoder.read(path, files)); }), verdict);
    EXPECT_EQ(verdictOf([&] { static_cast<void>(decoder.readSummary(path, files)); }), verdict);
    EXPECT_EQ(decoder.reconsideredCount(), count += 2);
  }
}

struct ErrorCase {
  const char* name;
  /// Makes something at a path.
  void (*make)(const std::string& path);
  int error;
};

class UnreadableFiles : public testing::TestWithParam<ErrorCase> {};

TEST_P(UnreadableFiles, raiseTheErrorOfTheFile) {
  const ScratchDirectory directory;
  const PosixFileReader files;
  const std::string path = directory.path("entry");
  GetParam().make(path);
  ManifestDecoder decoder;
  EXPECT_EQ(errorCodeOf([&] { static_cast<void>(decoder.read(path, files)); }), GetParam().error);
  EXPECT_EQ(errorCodeOf([&] { static_cast<void>(decoder.readSummary(path, files)); }),
            GetParam().error);
  EXPECT_EQ(decoder.reconsideredCount(), 0);
  EXPECT_EQ(decoder.read(directory.write("other", longManifest()), files), decoded(longManifest()));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, UnreadableFiles,
    testing::Values(
        ErrorCase{"missing", [](const std::string&) {}, ENOENT},
        ErrorCase{"directory",
                  [](const std::string& path) { require(::mkdir(path.c_str(), 0700) == 0, path); },
                  EISDIR},
        ErrorCase{"fifo",
                  [](const std::string& path) { require(::mkfifo(path.c_str(), 0600) == 0, path); },
                  EINVAL},
        ErrorCase{"loopingLink", [](const std::string& path) { link("entry", path); }, ELOOP},
        ErrorCase{"tooLong",
                  [](const std::string& path) {
                    makeSparseFile(path, static_cast<off_t>(longestSharedWarpManifest) + 1);
                  },
                  EFBIG}),
    RowName());

/// Delivers a text in portions; behind it, it raises an error where there is one.
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

/// What makes a text, and, where there is one, the error that is raised behind it. (Each test is a
/// process that makes the table of all cases, and the texts are long.)
struct Reading {
  std::function<std::string()> text;
  int error = 0;
};

/// A file that is one thing when it is read in pieces, and another when it is read as a whole.
class ChangingFile final : public FileReader {
 public:
  ChangingFile(Reading inPieces, Reading asAWhole)
      : inPieces_(std::move(inPieces)), asAWhole_(std::move(asAWhole)) {}

  bool exists(std::string_view) const override { return true; }
  bool isDirectory(std::string_view) const override { return false; }
  std::vector<std::string> entryNames(std::string_view) const override {
    throw posixError(ENOTDIR);
  }

  std::string read(std::string_view, std::size_t) const override {
    if (asAWhole_.error != 0) {
      throw posixError(asAWhole_.error);
    }
    return asAWhole_.text();
  }

  std::unique_ptr<FileContent> open(std::string_view, std::size_t) const override {
    return std::make_unique<TextContent>(inPieces_.text(), inPieces_.error);
  }

 private:
  Reading inPieces_;
  Reading asAWhole_;
};

std::string nothing() { return ""; }
std::string emptyObject() { return "{}"; }
std::string beginningOfAManifest() { return R"({"more":1,"version":)"; }
std::string wholeManifest() { return longManifest(); }
std::string cutManifest() { return longManifest().substr(0, 90'000); }

struct ChangeCase {
  const char* name;
  Reading inPieces;
  Reading asAWhole;
  /// What the second reading told, or the first one's error.
  int error = 0;
  Verdict verdict = valid;
  std::size_t reconsideredCount = 0;
};

class ChangingFiles : public testing::TestWithParam<ChangeCase> {};

TEST_P(ChangingFiles, areJudgedAsTheyAreWhenReadLast) {
  const ChangingFile file(GetParam().inPieces, GetParam().asAWhole);
  ManifestDecoder decoder;
  Verdict verdict = valid;
  EXPECT_EQ(errorCodeOf([&] {
              verdict = verdictOf(
                  [&] { EXPECT_EQ(decoder.read("/file", file), decoded(longManifest())); });
            }),
            GetParam().error);
  EXPECT_EQ(verdict, GetParam().verdict);
  EXPECT_EQ(decoder.reconsideredCount(), GetParam().reconsideredCount);
  // The next file is none the worse for it.
  EXPECT_EQ(decoder.read("/other", ChangingFile({wholeManifest}, {nothing, EIO})),
            decoded(longManifest()));
}

const Verdict missingVersion = {"keyNotFound", {"version"}, "The key \"version\" is missing."};

INSTANTIATE_TEST_SUITE_P(
    Cases, ChangingFiles,
    testing::Values(
        ChangeCase{"notReadAgainWhenItWasFine", {wholeManifest}, {nothing, EIO}},
        ChangeCase{"mended", {oddManifest}, {wholeManifest}, 0, valid, 1},
        ChangeCase{"cutAtFirst", {cutManifest}, {wholeManifest}, 0, valid, 1},
        ChangeCase{"emptyAtFirst", {nothing}, {wholeManifest}, 0, valid, 1},
        ChangeCase{"broken", {oddManifest}, {emptyObject}, 0, missingVersion, 1},
        ChangeCase{"cutSince",
                   {oddManifest},
                   {beginningOfAManifest},
                   0,
                   verdictOf([] { static_cast<void>(decoded(beginningOfAManifest())); }),
                   1},
        ChangeCase{"growsTooLong", {cutManifest, EFBIG}, {wholeManifest}, EFBIG},
        ChangeCase{"growsTooLongBehindTheManifest", {wholeManifest, EFBIG}, {wholeManifest}, EFBIG},
        ChangeCase{"growsTooLongAtOnce", {nothing, EFBIG}, {wholeManifest}, EFBIG},
        ChangeCase{"failsInTheMiddle", {cutManifest, EIO}, {wholeManifest}, EIO},
        ChangeCase{"grownTooLongSince", {oddManifest}, {nothing, EFBIG}, EFBIG},
        ChangeCase{"goneSince", {oddManifest}, {nothing, ENOENT}, ENOENT},
        ChangeCase{"directorySince", {oddManifest}, {nothing, EISDIR}, EISDIR}),
    RowName());

}  // namespace
}  // namespace velmora
