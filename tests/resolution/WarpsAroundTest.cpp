#include "platform/PathStandardizer.h"
#include "platform/PlatformError.h"
#include "resolution/WarpsAround.h"
#include "tests/fakes/RecordedWarps.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <new>
#include <optional>
#include <string>
#include <vector>

namespace velmora {
namespace {

using Warps = std::optional<std::vector<Text>>;

const Warps anyWarp = std::nullopt;

class WarpsAround : public testing::Test {
 protected:
  Warps around(const std::vector<Text>& paths) {
    std::vector<StandardizedPath> items;
    for (const Text& path : paths) {
      items.push_back({path});
    }
    return warpsAround(items, fake.fileSystem, fake.paths);
  }

  FakePlatform fake;
};

TEST_F(WarpsAround, areThoseOfTheMarkersInAndAboveTheItems) {
  mark(fake, "/", "root");
  mark(fake, "/a", "A");
  mark(fake, "/a/b/c", "C");
  mark(fake, "/a/sibling", "S");
  mark(fake, "/a/b/c/below", "B");
  EXPECT_EQ(around({"/a/b/c"}), (Warps{{"C", "A", "root"}}));
  EXPECT_EQ(around({"/x/y"}), Warps{{"root"}});
  EXPECT_EQ(around({"/"}), Warps{{"root"}});
  EXPECT_EQ(around({"/a/b/c", "/a/sibling", "/a/b/d"}), (Warps{{"C", "A", "root", "S"}}));
  EXPECT_EQ(around({}), Warps{std::vector<Text>()});
}

TEST_F(WarpsAround, areAbsentForAnInvalidMarker) {
  fake.fileSystem.createDirectories("/a/.velmora-warped.json");
  fake.fileSystem.createDirectories("/a/b");
  fake.fileSystem.files["/a/b/.velmora-warped.json"] = "{}";
  EXPECT_EQ(around({"/a/b"}), Warps{std::vector<Text>()});
}

TEST_F(WarpsAround, mayBeAnyWhenANameHasAnotherSpelling) {
  const struct {
    const char* name;
    const char* entry;
    const char* twin;
  } rows[] = {{"accent", "\u00e9", "e\u0301"},
              {"kelvin", "K", "\u212a"},
              {"kelvinItself", "\u212a", "K"},
              {"semicolon", "a;b", "a\u037eb"},
              {"grave", "`", "\u1fef"},
              {"hangul", "\ud55c", "\u1112\u1161\u11ab"},
              {"compatibilityIdeograph", "\uf900", "\u8c48"}};
  for (const auto& row : rows) {
    FakePlatform world;
    const auto around = [&](const std::string& path) {
      return warpsAround({{path}}, world.fileSystem, world.paths);
    };
    world.fileSystem.createDirectories("/x/" + std::string(row.entry) + "/below");
    EXPECT_EQ(around("/x/" + std::string(row.entry) + "/below"), Warps{std::vector<Text>()})
        << row.name;
    // A file is enough, because it may be a link to a folder.
    world.fileSystem.files["/x/" + std::string(row.twin)] = "";
    for (const std::string& path : {std::string(row.entry), row.entry + std::string("/below")}) {
      EXPECT_EQ(around("/x/" + path), anyWarp) << row.name;
    }
    EXPECT_EQ(around("/x"), Warps{std::vector<Text>()}) << row.name;
  }
}

TEST_F(WarpsAround, needNoListingsForNamesWithOneSpelling) {
  fake.fileSystem.createDirectories("/Users/a.b (1)/x~y");
  fake.fileSystem.entryNamesFailure = throwing(posixError(EACCES));
  EXPECT_EQ(around({"/Users/a.b (1)/x~y"}), Warps{std::vector<Text>()});
  for (const char* path : {"/K", "/;", "/`", "/\u00e9"}) {
    EXPECT_EQ(around({path}), anyWarp) << path;
  }
}

TEST_F(WarpsAround, mayBeAnyInAFolderOfTooManyNames) {
  for (std::size_t number = 0; number < maxSearchedNameCount; ++number) {
    fake.fileSystem.files["/x/" + std::to_string(number)] = "";
  }
  fake.fileSystem.createDirectories("/x");
  EXPECT_EQ(around({"/x/\u00e9"}), Warps{std::vector<Text>()});
  fake.fileSystem.files["/x/one more"] = "";
  EXPECT_EQ(around({"/x/\u00e9"}), anyWarp);
}

TEST_F(WarpsAround, areNotReportedAsNoneWhenMemoryRunsOut) {
  fake.fileSystem.entryNamesFailure = throwing(std::bad_alloc());
  EXPECT_THROW(static_cast<void>(around({"/\u00e9"})), std::bad_alloc);
  mark(fake, "/a", "A");
  fake.fileSystem.readFailure = throwing(std::bad_alloc());
  EXPECT_THROW(static_cast<void>(around({"/a"})), std::bad_alloc);
}

/// Behaves like macOS, where a path may have a prefix that its standardised form lacks.
class PrefixingStandardizer final : public PathStandardizer {
 public:
  Text standardizedFileURLPath(const Text& path) const override { return path; }
  Text standardizedPath(const Text& path) const override { return path; }
  std::vector<Text> pathsStandardizedTo(const Text& path) const override {
    return {path, "/private" + path.utf8()};
  }
};

TEST_F(WarpsAround, includeThoseOfEveryPathThatStandardisesToAnItem) {
  mark(fake, "/private/tmp", "P");
  EXPECT_EQ(warpsAround({{"/tmp/a"}}, fake.fileSystem, PrefixingStandardizer()), Warps{{"P"}});
}

}  // namespace
}  // namespace velmora
