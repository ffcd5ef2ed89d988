#include "extension/ActionKind.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <optional>

namespace velmora {
namespace {

TEST(ActionKind, followsFromTheBundleIdentifier) {
  struct Row {
    std::optional<Text> identifier;
    bool isRestore;
  };
  const Row rows[] = {{"io.tolvane.Velmora.FinderRestoreAction", true},
                      {"io.tolvane.Velmora.FinderWarpAction", false},
                      {std::nullopt, false},
                      {"", false},
                      {"io.tolvane.velmora.finderrestoreaction", false},
                      {"io.tolvane.Velmora.FinderRestoreAction2", false},
                      {"io.tolvane.Velmora.FinderRestoreActio", false},
                      {"io.tolvane.Velmora.FinderRestoreAction\u0301", false}};
  for (const Row& row : rows) {
    FakeExtensionBundle bundle;
    bundle.identifier = row.identifier;
    EXPECT_EQ(isRestoreAction(bundle), row.isRestore) << row.identifier.value_or("none").utf8();
    EXPECT_EQ(actionKind(bundle), row.isRestore ? ActionKind::restore : ActionKind::warp);
  }
}

}  // namespace
}  // namespace velmora
