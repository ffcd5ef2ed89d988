#include "tests/warpshared/PlainManifests.h"
#include "warpshared/ExactManifestReader.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace velmora {
namespace {

std::string threeEntries() {
  return plainManifestText(3, [](std::size_t number) { return "/a/" + std::to_string(number); });
}

/// The paths that `reader` gives away, and then what it says.
std::vector<std::string> pathsIn(std::string text, ExactManifestReader& reader) {
  std::vector<std::string> paths;
  const Verdict verdict = verdictOf([&] {
    static_cast<void>(reader.read(text, [&](const WarpSharedEntry<TextView>& entry) {
      paths.emplace_back(entry.relativePath.view());
    }));
  });
  paths.push_back(verdict == valid ? "valid" : describe(verdict.codingPath));
  return paths;
}

TEST(ExactManifestReaderTest, givesEachEntryOnceAndInOrder) {
  ExactManifestReader reader;
  EXPECT_EQ(pathsIn(threeEntries(), reader),
            (std::vector<std::string>{"/a/0", "/a/1", "/a/2", "valid"}));
}

TEST(ExactManifestReaderTest, givesTheEntriesBeforeAFaultyOne) {
  ExactManifestReader reader;
  std::string text = threeEntries();
  text.replace(text.find("/a/2"), 4, "a/2x");
  EXPECT_EQ(pathsIn(text, reader),
            (std::vector<std::string>{"/a/0", "/a/1", "/entries/2/absolutePath"}));
  EXPECT_EQ(pathsIn(threeEntries(), reader).back(), "valid");
}

TEST(ExactManifestReaderTest, givesAllEntriesBeforeWhatIsToldOfThemTogether) {
  ExactManifestReader reader;
  std::string text = threeEntries();
  text.replace(text.find("/a/0"), 4, "/a/2");
  EXPECT_EQ(pathsIn(text, reader), (std::vector<std::string>{"/a/2", "/a/1", "/a/2", "/entries"}));
  EXPECT_EQ(pathsIn(threeEntries(), reader).back(), "valid");
}

TEST(ExactManifestReaderTest, leavesSamplesAndEntriesOutOfTheManifest) {
  ExactManifestReader reader;
  std::string text = manifestDocument().text({"", JSONStyle::Order::sorted, true, true});
  const ReadManifest read = reader.read(text, [](const auto&) {});
  EXPECT_TRUE(read.manifest.entries.empty());
  EXPECT_TRUE(read.manifest.verificationSampleRelativePaths.empty());
  EXPECT_EQ(std::vector<Text>(read.samples.begin(), read.samples.end()),
            (std::vector<Text>{"/Users/a/Docs/file", "/Users/a/Docs"}));
  EXPECT_EQ(read.manifest.warpID, "W-1");
}

TEST(ExactManifestReaderTest, passesOnWhatTheUserOfEntriesThrows) {
  ExactManifestReader reader;
  std::string text = threeEntries();
  EXPECT_THROW(
      static_cast<void>(reader.read(text, [](const auto&) { throw std::domain_error("enough"); })),
      std::domain_error);
  EXPECT_EQ(pathsIn(threeEntries(), reader).back(), "valid");
}

}  // namespace
}  // namespace velmora
