// A successful request from end to end: the file, then the signal, then the application.

#include "tests/process/ProcessTest.h"

namespace velmora::process {

namespace {

class HandoffTest : public ProcessTest {
 protected:
  HandoffTest() {
    receiver.listen("io.tolvane.Velmora");
    setBus(bus.address());
  }

  PrivateBus bus{home.runtimeDirectory()};
  BusPeer receiver{bus.address()};
};

void expectHandoffSignal(const BusMessage& signal) {
  EXPECT_FALSE(signal.isCall);
  EXPECT_EQ(signal.path, "/io/tolvane/Velmora");
  EXPECT_EQ(signal.interface, "io.tolvane.Velmora");
  EXPECT_EQ(signal.member, "finderHandoff");
  EXPECT_EQ(signal.arguments, "()");
}

TEST_F(HandoffTest, requestIsWrittenThenSignalledThenOpened) {
  installApplication(execLine());
  receiver.watch(home.requestDirectory());
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
  const std::string json =
      substituted(golden, "@folders@", substituted(home.folders(), "/", "\\/"));
  EXPECT_EQ(readFile(home.requestDirectory() / name), json);

  const std::vector<BusMessage> signals = receiver.receivedUntilGone(outcome.process);
  ASSERT_EQ(signals.size(), 1U);
  expectHandoffSignal(signals.front());
  EXPECT_EQ(signals.front().files, (std::vector<std::string>{name, json}));
}

TEST_F(HandoffTest, senderOwnsANameBelowTheApplicationsWhileItSignals) {
  receiver.listenForOwners("io.tolvane.Velmora.FinderAction.");
  const Outcome outcome = run({home.makeFolder("A")});
  expectCompleted(outcome);
  const std::vector<BusMessage> messages = receiver.receivedUntilGone(outcome.process);
  ASSERT_EQ(messages.size(), 3U);
  const std::string& sender = messages[1].sender;
  const std::string name =
      "('io.tolvane.Velmora.FinderAction.p" + std::to_string(outcome.process) + "', ";
  EXPECT_EQ(messages[0].arguments, name + "'', '" + sender + "')");
  expectHandoffSignal(messages[1]);
  EXPECT_EQ(messages[2].arguments, name + "'" + sender + "', '')");
}

TEST_F(HandoffTest, eachRequestIsAFileAndASignalOfItsOwn) {
  // An empty address also leads to the session's bus.
  for (const char* address : {bus.address().c_str(), ""}) {
    setBus(address);
    const std::string folder = home.makeFolder("A");
    const Outcome outcome = run({folder});
    expectHandedOver(outcome, {folder});
    EXPECT_EQ(receiver.receivedUntilGone(outcome.process).size(),
              namesIn(home.requestDirectory()).size());
  }
  EXPECT_EQ(namesIn(home.requestDirectory()).size(), 2U);
}

TEST_F(HandoffTest, refusedItemsAreLeftOutWithoutAMessage) {
  const std::string first = home.makeFolder("first");
  const std::string second = home.makeFolder("second");
  expectHandedOver(run({home.makeFile("file"), first, home.path() / "missing", second}),
                   {first, second});
}

TEST_F(HandoffTest, requestGoesToTheSharedRoot) {
  const struct {
    const char* unset;
    const char* root;
  } rows[] = {{"", "other"},
              {"VELMORA_GROUP_CONTAINER", "data/group.io.tolvane.Velmora"},
              {"XDG_DATA_HOME", ".local/share/Velmora"}};
  std::filesystem::create_directories(home.dataHome() / "group.io.tolvane.Velmora");
  command.environment["VELMORA_GROUP_CONTAINER"] = home.path() / "given/../other//";
  for (const auto& row : rows) {
    SCOPED_TRACE(row.root);
    command.environment.erase(row.unset);
    expectCompleted(run({home.makeFolder("A")}));
    const std::vector<std::string> names = namesIn(home.path() / row.root / "Warp/FinderHandoff");
    ASSERT_EQ(names.size(), 1U);
    EXPECT_TRUE(hasForm(names.front(), requestNameForm)) << names.front();
  }
}

}  // namespace

}  // namespace velmora::process
