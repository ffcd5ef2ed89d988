#include "FileKind.h"
#include "tests/support/RowName.h"

#include <gtest/gtest.h>

namespace velmora::inspect {
namespace {

struct KindCase {
  const char* name;
  const char* path;
  FileKind kind;
};

class KindsByFileName : public testing::TestWithParam<KindCase> {};

TEST_P(KindsByFileName, areTold) { EXPECT_EQ(fileKindOf(GetParam().path), GetParam().kind); }

INSTANTIATE_TEST_SUITE_P(
    Paths, KindsByFileName,
    testing::Values(KindCase{"marker", ".velmora-warped.json", FileKind::marker},
                    KindCase{"markerInFolder", "/a/b/.velmora-warped.json", FileKind::marker},
                    KindCase{"markerBehindMore", "x.velmora-warped.json", FileKind::manifest},
                    KindCase{"index", "destroyed-manifest-index.json", FileKind::index},
                    KindCase{"indexInFolder", "../destroyed-manifest-index.json", FileKind::index},
                    KindCase{"indexAsFolder", "destroyed-manifest-index.json/a",
                             FileKind::manifest},
                    KindCase{"otherCase", "Destroyed-manifest-index.json", FileKind::manifest},
                    KindCase{"manifest", "W1.json", FileKind::manifest},
                    KindCase{"anything", "notes.txt", FileKind::manifest},
                    KindCase{"nothing", "", FileKind::manifest},
                    KindCase{"root", "/", FileKind::manifest}),
    RowName());

TEST(NamedKinds, areFoundByTheirNamesOnly) {
  for (const FileKind kind : {FileKind::manifest, FileKind::index, FileKind::marker}) {
    EXPECT_EQ(fileKindNamed(name(kind)), kind);
  }
  EXPECT_EQ(fileKindNamed("Manifest"), std::nullopt);
  EXPECT_EQ(fileKindNamed(""), std::nullopt);
}

}  // namespace
}  // namespace velmora::inspect
