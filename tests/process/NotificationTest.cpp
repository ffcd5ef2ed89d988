// Failures are shown on the desktop where no terminal shows them.

#include "tests/process/Buses.h"
#include "tests/process/ProcessTest.h"

#include <gio/gio.h>

#include <memory>

namespace velmora::process {

namespace {

struct VariantDeleter {
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using Variant = std::unique_ptr<GVariant, VariantDeleter>;

constexpr const char* serviceName = "org.freedesktop.Notifications";

class NotificationTest : public ProcessTest {
 protected:
  NotificationTest() { command.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address(); }

  Peer service() const {
    return Peer(bus.address(), {"--own", serviceName, "--reply", "(uint32 7,)"});
  }

  const std::string file = home.makeFile("file");
  const std::string sentence = message("en", chooseWarpFolders);
  PrivateBus bus{home};
};

void expectHint(GVariant* hints, const char* name, GVariant* expected) {
  const Variant owner(g_variant_ref_sink(expected));
  const Variant value(g_variant_lookup_value(hints, name, nullptr));
  ASSERT_NE(value, nullptr) << name;
  EXPECT_TRUE(g_variant_equal(value.get(), expected)) << name;
}

void expectNotification(const Record& call, const std::string& sentence) {
  EXPECT_EQ(call.value("type"), "call");
  EXPECT_EQ(call.value("path"), "/org/freedesktop/Notifications");
  EXPECT_EQ(call.value("interface"), "org.freedesktop.Notifications");
  EXPECT_EQ(call.value("member"), "Notify");
  ASSERT_EQ(call.value("signature"), "susssasa{sv}i");
  const Variant arguments(g_variant_parse(G_VARIANT_TYPE("(susssasa{sv}i)"),
                                          call.value("body").c_str(), nullptr, nullptr, nullptr));
  ASSERT_NE(arguments, nullptr) << call.value("body");
  const char* application = nullptr;
  guint32 replaced = 1;
  const char* icon = nullptr;
  const char* summary = nullptr;
  const char* body = nullptr;
  GVariant* actions = nullptr;
  GVariant* hints = nullptr;
  gint32 timeout = 0;
  g_variant_get(arguments.get(), "(&su&s&s&s@as@a{sv}i)", &application, &replaced, &icon, &summary,
                &body, &actions, &hints, &timeout);
  const Variant actionsOwner(actions);
  const Variant hintsOwner(hints);
  EXPECT_STREQ(application, "Velmora");
  EXPECT_EQ(replaced, 0U);
  EXPECT_STREQ(icon, "io.tolvane.Velmora");
  EXPECT_EQ(summary, sentence);
  EXPECT_STREQ(body, "");
  EXPECT_EQ(g_variant_n_children(actions), 0U);
  EXPECT_EQ(g_variant_n_children(hints), 2U);
  expectHint(hints, "urgency", g_variant_new_byte(1));
  expectHint(hints, "desktop-entry", g_variant_new_string("io.tolvane.Velmora"));
  EXPECT_EQ(timeout, -1);
}

TEST_F(NotificationTest, sentenceIsShownWhereStandardErrorIsNoTerminal) {
  Peer notifications = service();
  const Outcome outcome = run({file});
  expectCancelled(outcome, 1, sentence + "\n");
  const std::vector<Record> records = notifications.recordsUntilGone(outcome.process);
  ASSERT_EQ(records.size(), 1U);
  expectNotification(records.front(), sentence);
}

TEST_F(NotificationTest, failedHandoffIsShownInTheUsersLanguage) {
  Peer notifications = service();
  command.environment["LANG"] = "ja_JP.UTF-8";
  writeFile(home.container(), "");
  const Outcome outcome = run({home.makeFolder("A")});
  EXPECT_EQ(outcome.exitStatus, 2);
  const std::vector<Record> records = notifications.recordsUntilGone(outcome.process);
  ASSERT_EQ(records.size(), 1U);
  expectNotification(records.front(), message("ja", warpHandoffFailed));
}

TEST_F(NotificationTest, nothingIsShownOnRequest) {
  Peer notifications = service();
  const Outcome outcome = run({"--no-notify", file});
  expectCancelled(outcome, 1, sentence + "\n");
  EXPECT_TRUE(notifications.recordsUntilGone(outcome.process).empty());
}

TEST_F(NotificationTest, nothingIsShownBesideATerminal) {
  Peer notifications = service();
  command.standardError = StandardError::terminal;
  const Outcome outcome = run({file});
  expectCancelled(outcome, 1, sentence + "\n");
  EXPECT_TRUE(notifications.recordsUntilGone(outcome.process).empty());
}

TEST_F(NotificationTest, nothingIsShownOfSuccess) {
  Peer notifications = service();
  const Outcome outcome = run({home.makeFolder("A")});
  expectCompleted(outcome);
  EXPECT_TRUE(named(notifications.recordsUntilGone(outcome.process), "Notify").empty());
}

TEST_F(NotificationTest, nothingIsShownOfAUsageError) {
  Peer notifications = service();
  const Outcome outcome = run({});
  EXPECT_EQ(outcome.exitStatus, 64);
  EXPECT_TRUE(notifications.recordsUntilGone(outcome.process).empty());
}

TEST_F(NotificationTest, serviceThatNeverAnswersIsNotWaitedForForEver) {
  Peer notifications(bus.address(), {"--own", serviceName, "--mute"});
  const Outcome outcome = run({file});
  expectCancelled(outcome, 1, sentence + "\n");
  EXPECT_EQ(named(notifications.recordsUntilGone(outcome.process), "Notify").size(), 1U);
}

TEST_F(NotificationTest, absentServiceIsNoError) {
  expectCancelled(run({file}), 1, sentence + "\n");
}

}  // namespace

}  // namespace velmora::process
