#include "ManifestReport.h"

#include <gtest/gtest.h>

namespace velmora::inspect {
namespace {

ManifestSummary summary() {
  return {.warpID = "W\n1",
          .manifestKey = "manifests/W1.json",
          .originalFolderPath = "/home/a \xC3\xA9",
          .createdAt = *parseInternetDateTime("2025-11-21T03:39:54Z"),
          .status = VelmoraWarpSharedStatus::needsAttention,
          .entryCount = 1,
          .sampleCount = 2};
}

TEST(ManifestReports, holdAllAsJSON) {
  EXPECT_EQ(toJSON(summary()),
            "{\"warpID\":\"W\\n1\",\"manifestKey\":\"manifests/W1.json\","
            "\"originalFolderPath\":\"/home/a \u00e9\",\"createdAt\":\"2025-11-21T03:39:54Z\","
            "\"status\":\"needsAttention\",\"entries\":1,\"samples\":2}");
}

TEST(ManifestReports, areALineForPeople) {
  EXPECT_EQ(toText(summary()),
            "Warp W\\n1, needsAttention, 1 entry, 2 samples, key manifests/W1.json");
}

}  // namespace
}  // namespace velmora::inspect
