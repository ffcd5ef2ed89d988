#include "platform/PlatformError.h"
#include "platform/posix/PosixFileReader.h"
#include "resolution/WarpIDSearch.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

bool mayBe(const std::vector<Text>& warpIDs, const std::string& content) {
  FakePlatform fake;
  fake.fileSystem.files["/file"] = content;
  return WarpIDSearch(warpIDs).mayBeManifest("/file", fake.fileSystem);
}

TEST(WarpIDSearches, skipFilesThatCannotHoldAnIdentifier) {
  const struct {
    const char* name;
    std::vector<Text> warpIDs;
    std::string content;
    bool isFound;
  } rows[] = {
      {"there", {"A-1"}, R"({"warpID":"A-1"})", true},
      {"otherOne", {"A-1"}, R"({"warpID":"A-2"})", false},
      {"otherLetterCase", {"A-1"}, R"({"warpID":"a-1"})", false},
      {"oneOfTwo", {"X", "A-1"}, R"({"warpID":"A-1"})", true},
      {"escaped", {"A-1"}, R"({"warpID":"\u0041-1"})", true},
      {"anyNumberEscaped", {"A-1"}, R"({"warpID":"A-2\u0000"})", true},
      {"otherEscape", {"A-1"}, R"({"warpID":"A\/-1\n"})", false},
      {"emptyFile", {"A-1"}, "", false},
      {"blanksAndAMarkBefore", {"A-1"}, "\xEF\xBB\xBF \n\t\r{\"A-1\"", true},
      {"array", {"A-1"}, R"(["A-1"])", false},
      {"text", {"A-1"}, R"("A-1")", false},
      {"emptyIdentifier", {""}, R"({"warpID":"X"})", true},
      // These identifiers are not searched for, because other bytes may be equal to them.
      {"kelvin", {"K"}, "{\"warpID\":\"\u212a\"}", true},
      {"punctuation", {"a;b"}, "{}", true},
      {"noASCII", {"\u00e9"}, "{}", true},
      {"fourIdentifiers", {"1", "2", "3", "4"}, "{}", false},
      {"fiveIdentifiers", {"1", "2", "3", "4", "5"}, "{}", true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(mayBe(row.warpIDs, row.content), row.isFound) << row.name;
  }
}

TEST(WarpIDSearches, findAnIdentifierAcrossTwoChunks) {
  constexpr std::size_t chunk = std::size_t{256} << 10;
  const std::string identifier = "0123-4567";
  for (std::size_t position = chunk - 12; position < chunk + 12; ++position) {
    for (const std::string& needle : {identifier, std::string("\\u")}) {
      std::string content = "{" + std::string(chunk * 2 + 100, ' ');
      content.replace(position, needle.size(), needle);
      EXPECT_TRUE(mayBe({identifier}, content)) << position;
    }
    std::string content = "{" + std::string(chunk * 2 + 100, ' ');
    content.replace(position, identifier.size() - 1, identifier, 0, identifier.size() - 1);
    EXPECT_FALSE(mayBe({identifier}, content)) << position;
  }
}

TEST(WarpIDSearches, raiseTheErrorOfReading) {
  const ScratchDirectory scratch;
  const PosixFileReader files;
  WarpIDSearch search({"A"});
  EXPECT_THROW(static_cast<void>(search.mayBeManifest(scratch.path("missing"), files)),
               PlatformError);
  EXPECT_THROW(static_cast<void>(search.mayBeManifest(scratch.path(), files)), PlatformError);
}

}  // namespace
}  // namespace velmora
