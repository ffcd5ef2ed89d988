#include "extension/ActionKind.h"
#include "tests/support/RowName.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct IdentifierCase {
  const char* name;
  std::optional<Text> identifier;
  bool isRestore;
};

class ActionKind : public testing::TestWithParam<IdentifierCase> {};

TEST_P(ActionKind, followsFromTheBundleIdentifier) {
  FakeExtensionBundle bundle;
  bundle.identifier = GetParam().identifier;
  EXPECT_EQ(isRestoreAction(bundle), GetParam().isRestore);
}

INSTANTIATE_TEST_SUITE_P(
    Identifiers, ActionKind,
    testing::Values(IdentifierCase{"restore", "io.tolvane.Velmora.FinderRestoreAction", true},
                    IdentifierCase{"warp", "io.tolvane.Velmora.FinderWarpAction", false},
                    IdentifierCase{"none", std::nullopt, false}, IdentifierCase{"empty", "", false},
                    IdentifierCase{"letterCase", "io.tolvane.velmora.finderrestoreaction", false},
                    IdentifierCase{"longer", "io.tolvane.Velmora.FinderRestoreAction2", false},
                    IdentifierCase{"shorter", "io.tolvane.Velmora.FinderRestoreActio", false},
                    IdentifierCase{"markBehind", "io.tolvane.Velmora.FinderRestoreAction\u0301",
                                   false}),
    RowName());

}  // namespace
}  // namespace velmora
