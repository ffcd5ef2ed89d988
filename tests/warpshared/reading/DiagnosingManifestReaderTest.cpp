#include "tests/warpshared/PlainManifests.h"
#include "warpshared/reading/DiagnosingManifestReader.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace velmora::internal {
namespace {

std::string threeEntries() {
  return plainManifestText(3, [](std::size_t number) { return "/a/" + std::to_string(number); });
}

/// The paths that `reader` passes to its visitor, and then its verdict without the message.
std::vector<std::string> pathsIn(std::string text, DiagnosingManifestReader& reader) {
  std::vector<std::string> paths;
  const std::string verdict = verdictOf([&] {
    static_cast<void>(reader.read(text, {.begin = [] {},
                                         .sample = [](TextView) {},
                                         .entry =
                                             [&](const WarpSharedEntry<TextView>& entry) {
                                               paths.emplace_back(entry.relativePath.view());
                                             }}));
  });
  paths.push_back(verdict.substr(0, verdict.find(": ")));
  return paths;
}

TEST(DiagnosingManifestReaderTest, visitsTheEntriesBeforeAFaultInOrder) {
  struct {
    const char* name;
    const char* changedPath;
    const char* newPath;
    std::vector<std::string> pathsAndVerdict;
  } const rows[] = {
      {"none", "/a/0", "/a/0", {"/a/0", "/a/1", "/a/2", "valid"}},
      {"inAnEntry", "/a/2", "a/2x", {"/a/0", "/a/1", "dataCorrupted at /entries/2/absolutePath"}},
      {"ofAllTogether", "/a/0", "/a/2", {"/a/2", "/a/1", "/a/2", "dataCorrupted at /entries"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    DiagnosingManifestReader reader;
    std::string text = threeEntries();
    text.replace(text.find(row.changedPath), 4, row.newPath);
    EXPECT_EQ(pathsIn(text, reader), row.pathsAndVerdict);
    EXPECT_EQ(pathsIn(threeEntries(), reader).back(), valid);
  }
}

TEST(DiagnosingManifestReaderTest, leavesSamplesAndEntriesOutOfTheManifest) {
  DiagnosingManifestReader reader;
  std::string text = manifestDocument().text({"", JSONStyle::Order::sorted, true, true});
  std::vector<Text> samples;
  const VelmoraWarpSharedManifest manifest =
      reader.read(text, {.begin = [] {},
                         .sample = [&](TextView sample) { samples.emplace_back(sample); },
                         .entry = [](const auto&) {}});
  EXPECT_TRUE(manifest.entries.empty());
  EXPECT_TRUE(manifest.verificationSampleRelativePaths.empty());
  EXPECT_EQ(samples, (std::vector<Text>{"/Users/a/Docs/file", "/Users/a/Docs"}));
  EXPECT_EQ(manifest.warpID, "W-1");
}

TEST(DiagnosingManifestReaderTest, passesOnTheVisitorsException) {
  DiagnosingManifestReader reader;
  std::string text = threeEntries();
  const ManifestVisitor visitor = {.begin = [] {},
                                   .sample = [](TextView) {},
                                   .entry = [](const auto&) { throw std::domain_error("enough"); }};
  EXPECT_THROW(static_cast<void>(reader.read(text, visitor)), std::domain_error);
  EXPECT_EQ(pathsIn(threeEntries(), reader).back(), valid);
}

}  // namespace
}  // namespace velmora::internal
