// velmora-warp-inspect doctor: what the actions find on this system, found out without a trace.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/Buses.h"
#include "tests/process/InspectTest.h"

namespace velmora::process {

namespace {

using Names = std::vector<std::string>;

class InspectDoctorTest : public InspectTest {
 protected:
  JSONLine look(int exitStatus) {
    std::vector<JSONLine> lines = inspectAsJSON({"doctor"}, exitStatus);
    EXPECT_EQ(lines.size(), 1U);
    return std::move(lines.at(0));
  }
};

TEST_F(InspectDoctorTest, bareSystemIsReadyWithNotes) {
  const JSONLine line = look(0);
  EXPECT_EQ(line.keys(), (Names{"ready", "obstacles", "notes", "root", "mirror", "index", "handoff",
                                "language", "bus", "application"}));
  EXPECT_TRUE(line.flag("/ready"));
  EXPECT_EQ(line.texts("/obstacles"), Names());
  EXPECT_EQ(line.texts("/notes"), (Names{"busUnreachable", "applicationNotFound"}));
  EXPECT_EQ(line.text("/root/path"), sharedRoot());
  EXPECT_EQ(line.text("/root/source"), "VELMORA_GROUP_CONTAINER");
  EXPECT_FALSE(line.flag("/mirror/exists"));
  EXPECT_FALSE(line.flag("/index/exists"));
  EXPECT_FALSE(line.flag("/handoff/exists"));
  EXPECT_TRUE(line.flag("/handoff/writable"));
  EXPECT_EQ(line.text("/language/resolved"), "en");
}

TEST_F(InspectDoctorTest, completeSystemHasNoNotes) {
  const PrivateBus bus(home);
  installApplication("DBusActivatable=true\n" + execLine());
  makeWarpedFolder("a", "W1");
  mirrorManifest(manifestOf("/gone", "W2"), "W2.json");
  writeFile(sharedRoot() / "destroyed-manifest-index.json",
            indexJSON({tombstoneOf(manifestOf("/gone", "W3"))}));
  writeFile(home.requestDirectory() / "1.json", "");
  writeFile(home.requestDirectory() / "2.json", "");
  command.environment["LANG"] = "ja_JP.UTF-8";
  const JSONLine line = look(0);
  EXPECT_EQ(line.texts("/notes"), Names());
  EXPECT_EQ(line.number("/mirror/files"), 2U);
  EXPECT_EQ(line.number("/mirror/valid"), 2U);
  EXPECT_EQ(line.number("/mirror/refused"), 0U);
  EXPECT_EQ(line.number("/mirror/confirmed"), 1U);
  EXPECT_EQ(line.number("/index/records"), 1U);
  EXPECT_EQ(line.number("/handoff/requests"), 2U);
  EXPECT_EQ(line.text("/language/choice"), "system");
  EXPECT_EQ(line.text("/language/resolved"), "ja");
  EXPECT_TRUE(line.flag("/bus/reachable"));
  EXPECT_EQ(line.text("/application/path"),
            home.dataHome() / "applications" / "io.tolvane.Velmora.desktop");
  EXPECT_FALSE(launches.hasCaller());
}

TEST_F(InspectDoctorTest, nobodyOnTheBusHearsOfIt) {
  const PrivateBus bus(home);
  Peer receiver(bus.address(), {"--own", "io.tolvane.Velmora", "--own",
                                "org.freedesktop.Notifications", "--match", handoffRule});
  installApplication("DBusActivatable=true\n" + execLine());
  const Outcome outcome = inspect({"doctor"}, 0);
  EXPECT_NE(outcome.output.find("ok       session bus  reachable\n"), std::string::npos);
  for (const Record& record : receiver.recordsUntilGone(outcome.process)) {
    EXPECT_EQ(record.value("member"), "NameAcquired");
  }
}

TEST_F(InspectDoctorTest, stuckBusIsNotReachable) {
  const SilentBus bus(home, Silence::afterAuthentication);
  command.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
  const JSONLine line = look(0);
  EXPECT_FALSE(line.flag("/bus/reachable"));
}

TEST_F(InspectDoctorTest, groupContainerIsTold) {
  command.environment.erase("VELMORA_GROUP_CONTAINER");
  EXPECT_EQ(look(0).text("/root/source"), "fallback");
  EXPECT_EQ(look(0).text("/root/path"), home.dataHome() / "Velmora" / "Warp");
  std::filesystem::create_directories(home.dataHome() / "group.io.tolvane.Velmora");
  EXPECT_EQ(look(0).text("/root/source"), "groupContainer");
  EXPECT_EQ(look(0).text("/root/path"), home.dataHome() / "group.io.tolvane.Velmora" / "Warp");
}

TEST_F(InspectDoctorTest, requestDirectoryThatIsAFileIsAnObstacle) {
  writeFile(home.requestDirectory(), "");
  const JSONLine line = look(1);
  EXPECT_FALSE(line.flag("/ready"));
  EXPECT_EQ(line.texts("/obstacles"), Names{"handoffNotWritable"});
  EXPECT_FALSE(line.has("/handoff/requests"));
}

TEST_F(InspectDoctorTest, requestDirectoryThatMayNotBeWrittenToIsAnObstacle) {
  std::filesystem::create_directories(home.requestDirectory());
  std::filesystem::permissions(home.requestDirectory(), std::filesystem::perms(0555));
  runWithoutPrivileges();
  EXPECT_EQ(look(1).texts("/obstacles"), Names{"handoffNotWritable"});
}

TEST_F(InspectDoctorTest, mirrorThatIsAFileIsAnObstacle) {
  writeFile(mirror(), "");
  const JSONLine line = look(1);
  EXPECT_EQ(line.texts("/obstacles"), Names{"mirrorUnreadable"});
  EXPECT_EQ(line.text("/mirror/error/message"), "Not a directory");
}

TEST_F(InspectDoctorTest, damagedRecordsAreNotes) {
  writeFile(mirror() / "a.json", "");
  writeFile(sharedRoot() / "destroyed-manifest-index.json", "");
  const JSONLine line = look(0);
  EXPECT_EQ(line.texts("/notes"),
            (Names{"indexUnusable", "invalidManifests", "busUnreachable", "applicationNotFound"}));
  EXPECT_EQ(line.number("/mirror/refused"), 1U);
  EXPECT_EQ(line.text("/index/error/kind"), "dataCorrupted");
}

TEST_F(InspectDoctorTest, peopleGetALineASubject) {
  const std::string output = inspect({"doctor"}, 0).output;
  EXPECT_EQ(output.find("ok       root         " + sharedRoot().native() + "\n"), 0U) << output;
  EXPECT_TRUE(output.ends_with("Nothing stands in the way of an action.\n")) << output;
}

}  // namespace

}  // namespace velmora::process
