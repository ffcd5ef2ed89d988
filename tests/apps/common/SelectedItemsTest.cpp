#include "common/SelectedItems.h"
#include "extension/SelectionGathering.h"
#include "platform/PathStandardizer.h"
#include "text/LexicalPath.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

/// Takes /here for the working directory.
class StandardizerInHere final : public PathStandardizer {
 public:
  Text standardizedFileURLPath(const Text& path) const override {
    return path.view().starts_with('/') ? path : Text("/here/" + path.utf8());
  }
  Text standardizedPath(const Text& path) const override { return path; }
  std::vector<Text> pathsStandardizedTo(const Text& path) const override { return {path}; }
};

const StandardizerInHere standardizer;

/// The URLs that the providers of `operands` deliver, in order.
std::vector<std::optional<FileURL>> urlsOf(const std::vector<std::string>& operands) {
  std::vector<std::optional<FileURL>> urls;
  for (const auto& provider : providersFromOperands(operands, standardizer)) {
    EXPECT_TRUE(provider->hasItemConformingTo("public.file-url"));
    EXPECT_FALSE(provider->hasItemConformingTo("public.image"));
    provider->loadItem("public.file-url", [&](const LoadedItem& item, const PlatformError* error) {
      EXPECT_EQ(error, nullptr);
      urls.push_back(fileURLFromLoadedItem(item));
    });
  }
  return urls;
}

TEST(Operands, arePathsOrFileURLs) {
  const std::pair<std::string, FileURL> rows[] = {
      {"/a b", {"/a b"}},           {"/100%25 done", {"/100%25 done"}},
      {"a/b", {"/here/a/b"}},       {"~", {"/here/~"}},
      {"a:b", {"/here/a:b"}},       {"mailto:x", {"/here/mailto:x"}},
      {"1a://b", {"/here/1a://b"}}, {"/x://y", {"/x://y"}},
      {"file:///a%20b", {"/a b"}},  {"FILE://LOCALHOST/a", {"/a"}},
      {"file:/a?q#f", {"/a"}},
  };
  for (const auto& [operand, url] : rows) {
    EXPECT_EQ(urlsOf({operand}), std::vector{std::optional(url)}) << operand;
  }
}

TEST(Operands, deliverNoURLUnlessTheyNameAFile) {
  for (const char* operand : {"file://host/a", "file:///a%2Fb", "file:///a%00b", "file:///%FF",
                              "https://a/b", "trash:///a", "a+b-c.1://x", "", "/a\xff", "a\xff"}) {
    EXPECT_EQ(urlsOf({operand}), std::vector{std::optional<FileURL>()}) << operand;
  }
}

TEST(Operands, keepTheirOrder) {
  EXPECT_EQ(urlsOf({"/b", "/a"}), (std::vector<std::optional<FileURL>>{{{"/b"}}, {{"/a"}}}));
}

TEST(SplittingAtNUL, endsEachPartWithOne) {
  using std::string_literals::operator""s;
  using Parts = std::vector<std::string>;
  EXPECT_EQ(splitAtNUL(""), Parts());
  EXPECT_EQ(splitAtNUL("a\0"s), Parts{"a"});
  EXPECT_EQ(splitAtNUL("a\0b"s), (Parts{"a", "b"}));
  EXPECT_EQ(splitAtNUL("a\0\0b\0"s), (Parts{"a", "", "b"}));
  EXPECT_EQ(splitAtNUL("\0"s), Parts{""});
  EXPECT_EQ(splitAtNUL("a\nb\0\n\0"s), (Parts{"a\nb", "\n"}));
}

}  // namespace
}  // namespace velmora
