#include "tests/support/RowName.h"
#include "warpshared/ManifestRules.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace velmora {
namespace {

VelmoraWarpSharedManifest safeManifest() {
  VelmoraWarpSharedManifest manifest;
  manifest.warpID = "W";
  manifest.deviceID = "D";
  manifest.manifestKey = "manifests/W.json";
  manifest.originalFolderPath = "/a";
  return manifest;
}

struct RuleCase {
  const char* name;
  void (*change)(VelmoraWarpSharedManifest&);
  bool isKept;
};

class IdentityRule : public testing::TestWithParam<RuleCase> {};

TEST_P(IdentityRule, isKeptOrBroken) {
  VelmoraWarpSharedManifest manifest = safeManifest();
  GetParam().change(manifest);
  EXPECT_EQ(isIdentitySafe(manifest), GetParam().isKept);
}

using Manifest = VelmoraWarpSharedManifest;

INSTANTIATE_TEST_SUITE_P(
    Table, IdentityRule,
    testing::Values(
        RuleCase{"safe", [](Manifest&) {}, true},
        RuleCase{"folderIsTheRoot", [](Manifest& manifest) { manifest.originalFolderPath = "/"; },
                 true},
        RuleCase{"noDisplayName", [](Manifest& manifest) { manifest.displayName = ""; }, true},
        RuleCase{"noWarpID", [](Manifest& manifest) { manifest.warpID = ""; }, false},
        RuleCase{"noDeviceID", [](Manifest& manifest) { manifest.deviceID = ""; }, false},
        RuleCase{"noKey", [](Manifest& manifest) { manifest.manifestKey = ""; }, false},
        RuleCase{"absoluteKey", [](Manifest& manifest) { manifest.manifestKey = "/a"; }, false},
        RuleCase{"keyWithDotDot", [](Manifest& manifest) { manifest.manifestKey = "a/../b"; },
                 false},
        RuleCase{"noFolder", [](Manifest& manifest) { manifest.originalFolderPath = ""; }, false},
        RuleCase{"relativeFolder", [](Manifest& manifest) { manifest.originalFolderPath = "a"; },
                 false},
        RuleCase{"folderWithSlashBehind",
                 [](Manifest& manifest) { manifest.originalFolderPath = "/a/"; }, false},
        RuleCase{"folderWithNUL",
                 [](Manifest& manifest) { manifest.originalFolderPath = std::string("/a\0", 3); },
                 false}),
    RowName());

constexpr Date notFinite{std::numeric_limits<double>::infinity()};

class DateRule : public testing::TestWithParam<RuleCase> {};

TEST_P(DateRule, isKeptOrBroken) {
  VelmoraWarpSharedManifest manifest = safeManifest();
  GetParam().change(manifest);
  EXPECT_EQ(areDatesFinite(manifest), GetParam().isKept);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DateRule,
    testing::Values(RuleCase{"onlyCreated", [](Manifest&) {}, true},
                    RuleCase{"allFinite",
                             [](Manifest& manifest) {
                               manifest.uploadedAt = Date{-1};
                               manifest.replacedAt = Date{1e300};
                             },
                             true},
                    RuleCase{"createdInfinite",
                             [](Manifest& manifest) { manifest.createdAt = notFinite; }, false},
                    RuleCase{"createdNotANumber",
                             [](Manifest& manifest) {
                               manifest.createdAt = Date{std::numeric_limits<double>::quiet_NaN()};
                             },
                             false},
                    RuleCase{"uploadedInfinite",
                             [](Manifest& manifest) { manifest.uploadedAt = notFinite; }, false},
                    RuleCase{"replacedInfinite",
                             [](Manifest& manifest) { manifest.replacedAt = notFinite; }, false}),
    RowName());

}  // namespace
}  // namespace velmora
