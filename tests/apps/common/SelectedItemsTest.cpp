#include "common/SelectedItems.h"
#include "extension/SelectionGathering.h"
#include "platform/PathStandardizer.h"
#include "tests/support/RowName.h"
#include "text/LexicalPath.h"

#include <gtest/gtest.h>

#include <optional>

namespace velmora {
namespace {

/// Works in /here.
class StandardizerInHere final : public PathStandardizer {
 public:
  Text standardizedFileURLPath(const Text& path) const override {
    return path.view().starts_with('/') ? path : Text("/here/" + path.utf8());
  }
  Text standardizedPath(const Text& path) const override { return path; }
};

const StandardizerInHere standardizer;

struct OperandCase {
  const char* name;
  std::string operand;
  std::optional<FileURL> url;
};

class Operands : public testing::TestWithParam<OperandCase> {};

TEST_P(Operands, areTakenAsThePathsAndURLsThatTheyAre) {
  const auto providers = providersFromOperands({GetParam().operand}, standardizer);
  ASSERT_EQ(providers.size(), 1U);
  EXPECT_TRUE(providers[0]->hasItemConformingTo("public.file-url"));
  EXPECT_FALSE(providers[0]->hasItemConformingTo("public.image"));
  std::optional<FileURL> url;
  int answerCount = 0;
  providers[0]->loadItem("public.file-url",
                         [&](const LoadedItem& item, const PlatformError* error) {
                           ++answerCount;
                           EXPECT_EQ(error, nullptr);
                           url = fileURLFromLoadedItem(item);
                         });
  EXPECT_EQ(answerCount, 1);
  EXPECT_EQ(url, GetParam().url);
}

INSTANTIATE_TEST_SUITE_P(
    PathsAndURLs, Operands,
    testing::Values(OperandCase{"absolute", "/a b", FileURL{"/a b"}},
                    OperandCase{"percentIsAName", "/100%25 done", FileURL{"/100%25 done"}},
                    OperandCase{"relative", "a/b", FileURL{"/here/a/b"}},
                    OperandCase{"tildeIsAName", "~", FileURL{"/here/~"}},
                    OperandCase{"colonInAName", "a:b", FileURL{"/here/a:b"}},
                    OperandCase{"schemeLikeName", "mailto:x", FileURL{"/here/mailto:x"}},
                    OperandCase{"slashesBehindNoScheme", "1a://b", FileURL{"/here/1a://b"}},
                    OperandCase{"absoluteWithURLInside", "/x://y", FileURL{"/x://y"}},
                    OperandCase{"fileURL", "file:///a%20b", FileURL{"/a b"}},
                    OperandCase{"fileURLUpperCase", "FILE://LOCALHOST/a", FileURL{"/a"}},
                    OperandCase{"fileURLShort", "file:/a?q#f", FileURL{"/a"}},
                    OperandCase{"fileURLOfAnotherHost", "file://host/a", std::nullopt},
                    OperandCase{"fileURLWithEncodedSlash", "file:///a%2Fb", std::nullopt},
                    OperandCase{"fileURLWithEncodedNUL", "file:///a%00b", std::nullopt},
                    OperandCase{"fileURLNotUTF8", "file:///%FF", std::nullopt},
                    OperandCase{"web", "https://a/b", std::nullopt},
                    OperandCase{"trash", "trash:///a", std::nullopt},
                    OperandCase{"schemeCharacters", "a+b-c.1://x", std::nullopt},
                    OperandCase{"empty", "", std::nullopt},
                    OperandCase{"pathNotUTF8", "/a\xff", std::nullopt},
                    OperandCase{"relativePathNotUTF8", "a\xff", std::nullopt}),
    RowName());

TEST(ManyOperands, keepTheirOrder) {
  const auto providers = providersFromOperands({"/b", "/a"}, standardizer);
  std::vector<LoadedItem> items;
  for (const auto& provider : providers) {
    provider->loadItem("public.file-url", [&](const LoadedItem& item, const PlatformError*) {
      items.push_back(item);
    });
  }
  ASSERT_EQ(items.size(), 2U);
  EXPECT_EQ(fileURLFromLoadedItem(items[0]), FileURL{"/b"});
  EXPECT_EQ(fileURLFromLoadedItem(items[1]), FileURL{"/a"});
}

struct SplitCase {
  const char* name;
  std::string bytes;
  std::vector<std::string> parts;
};

class SplittingAtNUL : public testing::TestWithParam<SplitCase> {};

TEST_P(SplittingAtNUL, endsEachPartWithOne) {
  EXPECT_EQ(splitAtNUL(GetParam().bytes), GetParam().parts);
}

using std::string_literals::operator""s;

INSTANTIATE_TEST_SUITE_P(Bytes, SplittingAtNUL,
                         testing::Values(SplitCase{"nothing", "", {}},
                                         SplitCase{"one", "a\0"s, {"a"}},
                                         SplitCase{"withoutTheLastNUL", "a\0b"s, {"a", "b"}},
                                         SplitCase{"emptyPart", "a\0\0b\0"s, {"a", "", "b"}},
                                         SplitCase{"onlyNUL", "\0"s, {""}},
                                         SplitCase{"newlines", "a\nb\0\n\0"s, {"a\nb", "\n"}}),
                         RowName());

}  // namespace
}  // namespace velmora
