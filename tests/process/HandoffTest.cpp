// A good request from end to end: the file, the signal after it, the application.

#include "tests/support/RowName.h"
#include "tests/process/Buses.h"
#include "tests/process/ProcessTest.h"

#include <algorithm>

namespace velmora::process {

namespace {

class HandoffTest : public ProcessTest {
 protected:
  HandoffTest() { command.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address(); }

  Peer monitor() const {
    return Peer(bus.address(),
                {"--match", handoffRule, "--list", home.requestDirectory().string()});
  }

  PrivateBus bus{home};
};

void expectHandoffSignal(const Record& signal) {
  EXPECT_EQ(signal.value("type"), "signal");
  EXPECT_EQ(signal.value("path"), "/io/tolvane/Velmora");
  EXPECT_EQ(signal.value("interface"), "io.tolvane.Velmora");
  EXPECT_EQ(signal.value("member"), "finderHandoff");
  EXPECT_EQ(signal.value("signature"), "");
  EXPECT_TRUE(signal.values("body").empty());
}

TEST_F(HandoffTest, foldersAreWrittenSignalledAndOpened) {
  installApplication(execLine());
  Peer receiver = monitor();
  const std::vector<std::string> folders = {home.makeFolder("A"), home.makeFolder("b c"),
                                            home.makeFolder("d\"é'")};
  const std::string before = currentMoment();
  const Outcome outcome = run(folders);
  const std::string after = currentMoment();
  expectCompleted(outcome);

  const auto application = launched();
  ASSERT_NE(application, nullptr);

  const Request request = onlyRequest();
  EXPECT_LE(before, request.createdAt);
  EXPECT_LE(request.createdAt, after);
  const std::string name = namesIn(home.requestDirectory()).front();
  const std::string golden =
      substituted(readFile(std::filesystem::path(VELMORA_TEST_GOLDEN) / "three_folders.json"),
                  "@createdAt@", request.createdAt);
  const std::string escapedFolder = substituted(home.path() / "folders", "/", "\\/");
  const std::string json = substituted(golden, "@folders@", escapedFolder);
  EXPECT_EQ(readFile(home.requestDirectory() / name), json);

  const std::vector<Record> signals =
      named(receiver.recordsUntilGone(outcome.process), "finderHandoff");
  ASSERT_EQ(signals.size(), 1U);
  expectHandoffSignal(signals.front());
  EXPECT_EQ(signals.front().values("file"), std::vector<std::string>{name});
  EXPECT_EQ(signals.front().values("content"), std::vector<std::string>{json});
}

TEST_F(HandoffTest, senderOwnsANameBelowTheApplicationsWhileItSignals) {
  Peer receiver = monitor();
  const Outcome outcome = run({home.makeFolder("A")});
  expectCompleted(outcome);
  const std::vector<Record> records = receiver.recordsUntilGone(outcome.process);
  ASSERT_EQ(records.size(), 3U);
  const std::string name = "io.tolvane.Velmora.FinderAction.p" + std::to_string(outcome.process);
  EXPECT_EQ(records[0].value("joined"), name);
  expectHandoffSignal(records[1]);
  EXPECT_EQ(records[2].value("left"), name);
}

TEST_F(HandoffTest, eachRequestIsAFileAndASignalOfItsOwn) {
  Peer receiver = monitor();
  const std::string folder = home.makeFolder("A");
  std::size_t signals = 0;
  for (int request = 0; request < 2; ++request) {
    const Outcome outcome = run({folder});
    expectCompleted(outcome);
    EXPECT_EQ(onlyRequest().folderPaths, std::vector<std::string>{folder});
    signals += named(receiver.recordsUntilGone(outcome.process), "finderHandoff").size();
  }
  EXPECT_EQ(signals, 2U);
  EXPECT_EQ(namesIn(home.requestDirectory()).size(), 2U);
}

TEST_F(HandoffTest, busOfTheSessionIsFoundWithoutAnAddress) {
  command.environment.erase("DBUS_SESSION_BUS_ADDRESS");
  Peer receiver = monitor();
  const Outcome outcome = run({home.makeFolder("A")});
  expectCompleted(outcome);
  EXPECT_EQ(named(receiver.recordsUntilGone(outcome.process), "finderHandoff").size(), 1U);
}

TEST_F(HandoffTest, refusedItemsAreLeftOutInSilence) {
  const std::string first = home.makeFolder("first");
  const std::string second = home.makeFolder("second");
  const Outcome outcome = run({home.makeFile("file"), first, home.path() / "missing", second});
  expectCompleted(outcome);
  EXPECT_EQ(onlyRequest().folderPaths, (std::vector<std::string>{first, second}));
}

struct PlaceCase {
  const char* name;
  /// Variables below the home; without a value, unset.
  std::vector<std::pair<const char*, const char*>> variables;
  const char* existing;
  const char* requestDirectory;
};

class PlaceTest : public ProcessTest, public ::testing::WithParamInterface<PlaceCase> {};

TEST_P(PlaceTest, requestGoesToTheSharedRoot) {
  for (const auto& [name, value] : GetParam().variables) {
    if (value == nullptr) {
      command.environment.erase(name);
    } else {
      command.environment[name] = value[0] == '.' ? value : home.path() / value;
    }
  }
  std::filesystem::create_directories(home.path() / GetParam().existing);
  expectCompleted(run({home.makeFolder("A")}));
  const std::vector<std::string> names = namesIn(home.path() / GetParam().requestDirectory);
  ASSERT_EQ(names.size(), 1U);
  EXPECT_TRUE(hasForm(names.front(), requestNameForm)) << names.front();
}

INSTANTIATE_TEST_SUITE_P(
    Places, PlaceTest,
    ::testing::Values(PlaceCase{"givenContainer",
                                {{"VELMORA_GROUP_CONTAINER", "given/../other//"}},
                                "data/group.io.tolvane.Velmora",
                                "other/Warp/FinderHandoff"},
                      PlaceCase{"relativeContainerIsIgnored",
                                {{"VELMORA_GROUP_CONTAINER", "./given"}},
                                "data/group.io.tolvane.Velmora",
                                "data/group.io.tolvane.Velmora/Warp/FinderHandoff"},
                      PlaceCase{"containerOfTheApplication",
                                {{"VELMORA_GROUP_CONTAINER", nullptr}},
                                "data/group.io.tolvane.Velmora",
                                "data/group.io.tolvane.Velmora/Warp/FinderHandoff"},
                      PlaceCase{"noContainer",
                                {{"VELMORA_GROUP_CONTAINER", nullptr}},
                                "data",
                                "data/Velmora/Warp/FinderHandoff"},
                      PlaceCase{"noDataHome",
                                {{"VELMORA_GROUP_CONTAINER", nullptr}, {"XDG_DATA_HOME", nullptr}},
                                "data/group.io.tolvane.Velmora",
                                ".local/share/Velmora/Warp/FinderHandoff"},
                      PlaceCase{"relativeDataHomeIsIgnored",
                                {{"VELMORA_GROUP_CONTAINER", nullptr}, {"XDG_DATA_HOME", "./data"}},
                                ".local/share/group.io.tolvane.Velmora",
                                ".local/share/group.io.tolvane.Velmora/Warp/FinderHandoff"},
                      PlaceCase{"noHome",
                                {{"VELMORA_GROUP_CONTAINER", nullptr}, {"HOME", nullptr}},
                                "data",
                                "data/Velmora/Warp/FinderHandoff"}),
    RowName());

}  // namespace

}  // namespace velmora::process
