#include "FileKind.h"

#include <gtest/gtest.h>

#include <optional>

namespace velmora::inspect {
namespace {

TEST(KindsByFileName, areTold) {
  EXPECT_EQ(fileKindOf(".velmora-warped.json"), FileKind::marker);
  EXPECT_EQ(fileKindOf("/a/b/.velmora-warped.json"), FileKind::marker);
  EXPECT_EQ(fileKindOf("destroyed-manifest-index.json"), FileKind::index);
  EXPECT_EQ(fileKindOf("../destroyed-manifest-index.json"), FileKind::index);
  for (const char* path : {"x.velmora-warped.json", "destroyed-manifest-index.json/a",
                           "Destroyed-manifest-index.json", "W1.json", "notes.txt", "", "/"}) {
    EXPECT_EQ(fileKindOf(path), FileKind::manifest) << path;
  }
}

TEST(NamedKinds, areFoundByTheirNamesOnly) {
  for (const FileKind kind : {FileKind::manifest, FileKind::index, FileKind::marker}) {
    EXPECT_EQ(fileKindNamed(name(kind)), kind);
  }
  EXPECT_EQ(fileKindNamed("Manifest"), std::nullopt);
  EXPECT_EQ(fileKindNamed(""), std::nullopt);
}

}  // namespace
}  // namespace velmora::inspect
