#include "platform/posix/PosixPathStandardizer.h"
#include "resolution/StandardizedPath.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace velmora {
namespace {

using Paths = std::vector<Text>;

TEST(StandardizedPath, isMadeByThePlatform) {
  EXPECT_EQ(standardized("/a/../b/", PosixPathStandardizer()), StandardizedPath{"/b"});
  EXPECT_EQ(standardized("/caf\u00e9", PosixPathStandardizer()), StandardizedPath{"/cafe\u0301"});
}

TEST(PathAndAncestors, goFromTheItemToTheRoot) {
  const std::pair<const char*, Paths> rows[] = {{"", {}},
                                                {"a/b", {}},
                                                {"/\u0301a", {}},
                                                {"/", {"/"}},
                                                {"/a", {"/a", "/"}},
                                                {"/a/b/c", {"/a/b/c", "/a/b", "/a", "/"}},
                                                {"/a/\u0301b", {"/a/\u0301b", "/"}},
                                                {"/a\u0600/b", {"/a\u0600/b", "/a\u0600", "/"}}};
  for (const auto& [path, folders] : rows) {
    EXPECT_EQ(pathAndAncestors({path}), folders) << path;
  }
}

}  // namespace
}  // namespace velmora
