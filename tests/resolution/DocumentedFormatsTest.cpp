// The examples of docs/formats.md are valid.

#include "json/strict/JSONReader.h"
#include "resolution/WarpMarker.h"
#include "warpshared/reading/DestroyedManifestIndexDecoding.h"
#include "warpshared/reading/ManifestDecoding.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace velmora {
namespace {

std::vector<std::string> examples() {
  std::ifstream file(VELMORA_TEST_DATA "/../../docs/formats.md");
  const std::string document{std::istreambuf_iterator<char>(file), {}};
  const std::string opening = "```json\n";
  std::vector<std::string> found;
  for (std::size_t begin = document.find(opening); begin != std::string::npos;
       begin = document.find(opening, begin)) {
    begin += opening.size();
    found.push_back(document.substr(begin, document.find("```", begin) - begin));
  }
  return found;
}

TEST(DocumentedFormats, areValid) {
  std::vector<std::string> documents = examples();
  ASSERT_EQ(documents.size(), 3);
  const VelmoraWarpSharedManifest manifest = ManifestDecoder().decode(documents[0]);
  EXPECT_EQ(manifest.entries.size(), 1);
  const VelmoraWarpSharedDestroyedManifestIndex index = decodeDestroyedManifestIndex(documents[1]);
  EXPECT_NO_THROW(validateDestroyedManifestIndex(index));
  EXPECT_EQ(index.records.size(), 1);
  internal::JSONReader reader;
  EXPECT_EQ(decodeWarpMarker(documents[2], reader).warpID, manifest.warpID);
}

}  // namespace
}  // namespace velmora
