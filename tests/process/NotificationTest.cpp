// Failures without a terminal are shown on the desktop.

#include "tests/process/ProcessTest.h"

namespace velmora::process {

namespace {

class NotificationTest : public ProcessTest {
 protected:
  NotificationTest() {
    setBus(bus.address());
    notifications.answerWith("(uint32 7,)");
    notifications.own("org.freedesktop.Notifications");
  }

  /// The notifications of a run. Expects this exit status.
  std::vector<BusMessage> shown(const Outcome& outcome, int exitStatus) {
    EXPECT_EQ(outcome.exitStatus, exitStatus);
    return notifications.receivedUntilGone(outcome.process);
  }

  const std::string file = home.makeFile("file");
  const std::string text = message("en", chooseWarpFolders);
  PrivateBus bus;
  BusPeer notifications{bus.address()};
};

void expectNotification(const std::vector<BusMessage>& shown, const std::string& text) {
  ASSERT_EQ(shown.size(), 1U);
  EXPECT_TRUE(shown.front().isCall);
  EXPECT_EQ(shown.front().path, "/org/freedesktop/Notifications");
  EXPECT_EQ(shown.front().interface, "org.freedesktop.Notifications");
  EXPECT_EQ(shown.front().member, "Notify");
  EXPECT_EQ(shown.front().arguments,
            "('Velmora', uint32 0, 'io.tolvane.Velmora', '" + text +
                "', '', @as [], {'urgency': <byte 0x01>, 'desktop-entry': <'io.tolvane.Velmora'>}, "
                "-1)");
}

TEST_F(NotificationTest, messageIsShownWhenStandardErrorIsNoTerminal) {
  const Outcome outcome = run({file});
  expectCancelled(outcome, 1, text + "\n");
  expectNotification(shown(outcome, 1), text);
}

TEST_F(NotificationTest, failedHandoffIsShownInTheUsersLanguage) {
  command.environment["LANG"] = "ja_JP.UTF-8";
  writeFile(home.container(), "");
  expectNotification(shown(run({home.makeFolder("A")}), 2), message("ja", warpHandoffFailed));
}

TEST_F(NotificationTest, messageIsShownWhenNobodyReadsStandardError) {
  command.standardError = StandardError::stuckPipe;
  expectNotification(shown(run({file}), 1), text);
}

TEST_F(NotificationTest, failedHandoffIsShownWhenNobodyReadsStandardError) {
  command.standardError = StandardError::stuckPipe;
  writeFile(home.container(), "");
  expectNotification(shown(run({home.makeFolder("A")}), 2), message("en", warpHandoffFailed));
}

TEST_F(NotificationTest, nothingElseIsShown) {
  EXPECT_TRUE(shown(run({"--no-notify", file}), 1).empty());
  EXPECT_TRUE(shown(run({home.makeFolder("A")}), 0).empty());
  EXPECT_TRUE(shown(run({}), 64).empty());
  command.standardError = StandardError::terminal;
  const Outcome outcome = run({file});
  expectCancelled(outcome, 1, text + "\n");
  EXPECT_TRUE(shown(outcome, 1).empty());
}

TEST_F(NotificationTest, programEndsWhenTheServiceNeverAnswers) {
  notifications.answerWith("");
  const Outcome outcome = run({file});
  expectCancelled(outcome, 1, text + "\n");
  EXPECT_EQ(shown(outcome, 1).size(), 1U);
}

}  // namespace

}  // namespace velmora::process
