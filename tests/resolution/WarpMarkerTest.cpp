#include "json/DecodingError.h"
#include "json/JSONWriting.h"
#include "json/strict/JSONReader.h"
#include "platform/PlatformError.h"
#include "resolution/WarpMarker.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/support/AnsweredDocuments.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>
#include <string>

namespace velmora {
namespace {

TEST(WarpMarkers, areReadFromTheirFolder) {
  FakePlatform fake;
  internal::JSONReader reader;
  mark(fake, "/a", "W");
  EXPECT_EQ(readWarpMarker("/a", fake.fileSystem, reader), WarpMarker{"W"});
  EXPECT_EQ(readWarpMarker("/b", fake.fileSystem, reader), std::nullopt);
}

TEST(WarpMarkers, areMissingOnlyIfNothingExists) {
  FakePlatform fake;
  internal::JSONReader reader;
  for (const int code : {ENOENT, ENOTDIR}) {
    fake.fileSystem.readFailure = throwing(posixError(code));
    EXPECT_EQ(readWarpMarker("/a", fake.fileSystem, reader), std::nullopt);
  }
  for (const int code : {EACCES, ELOOP, EIO}) {
    fake.fileSystem.readFailure = throwing(posixError(code));
    EXPECT_THROW(static_cast<void>(readWarpMarker("/a", fake.fileSystem, reader)), PlatformError);
  }
  mark(fake, "/a", "W");
  fake.fileSystem.readFailure = nullptr;
  fake.fileSystem.files["/a/.velmora-warped.json"] = "[]";
  EXPECT_THROW(static_cast<void>(readWarpMarker("/a", fake.fileSystem, reader)), DecodingError);
}

TEST(AnsweredMarkers, getTheirAnswers) {
  const auto documents = readAnsweredDocuments("warpshared/marker.jsonl");
  EXPECT_EQ(documents.size(), 64);
  internal::JSONReader reader;
  for (const AnsweredDocument& document : documents) {
    std::string bytes = document.bytes;
    try {
      const WarpMarker marker = decodeWarpMarker(bytes, reader);
      ASSERT_NE(document.okJSON(), nullptr) << document.name;
      std::string answer;
      internal::appendJSONString(answer, marker.warpID);
      EXPECT_EQ(answer, *document.okJSON()) << document.name;
    } catch (const DecodingError& error) {
      ASSERT_NE(document.error(), nullptr) << document.name << ": " << error.what();
      EXPECT_EQ(document.error()->kind, "notAMarker") << document.name;
    }
  }
}

}  // namespace
}  // namespace velmora
