// velmora-warp-inspect doctor: describes the system as the actions find it, and changes nothing.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/InspectTest.h"

namespace velmora::process {

namespace {

using Names = std::vector<std::string>;

class InspectDoctorTest : public InspectTest {
 protected:
  JSONLine look(int exitStatus) { return onlyLine({"doctor"}, exitStatus); }
};

TEST_F(InspectDoctorTest, bareSystemIsReadyWithNotes) {
  const JSONLine line = look(0);
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
  const std::string output = inspect({"doctor"}, 0).output;
  EXPECT_TRUE(output.starts_with("ok       root         " + sharedRoot().native() + "\n"));
  EXPECT_TRUE(output.ends_with("Nothing stands in the way of an action.\n")) << output;
}

TEST_F(InspectDoctorTest, completeSystemHasNoNotesAndGetsNoSignal) {
  const PrivateBus bus(home.runtimeDirectory());
  BusPeer receiver(bus.address());
  receiver.listen("io.tolvane.Velmora");
  receiver.own("io.tolvane.Velmora");
  receiver.own("org.freedesktop.Notifications");
  installApplication("DBusActivatable=true\n" + execLine());
  makeWarpedFolder("a", "W1");
  mirrorManifest(manifestOf("/gone", "W2"), "W2.json");
  writeFile(index(), indexJSON({tombstoneOf(manifestOf("/gone", "W3"))}));
  writeFile(home.requestDirectory() / "1.json", "");
  writeFile(home.requestDirectory() / "2.json", "");
  command.environment["LANG"] = "ja_JP.UTF-8";
  const Outcome outcome = inspect({"doctor", "--json"}, 0);
  const JSONLine line(outcome.output);
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
  EXPECT_TRUE(receiver.receivedUntilGone(outcome.process).empty());
  EXPECT_FALSE(launches.hasCaller());
}

TEST_F(InspectDoctorTest, unreadableEntryDoesNotHideAnotherOne) {
  installApplication(execLine());
  const std::filesystem::path ofUser =
      home.dataHome() / "applications" / "io.tolvane.Velmora.desktop";
  const std::filesystem::path shared =
      home.path() / "share" / "applications" / "io.tolvane.Velmora.desktop";
  writeFile(shared, readFile(ofUser));
  std::filesystem::permissions(ofUser, std::filesystem::perms::none);
  runAs(nobody);
  EXPECT_EQ(look(0).text("/application/path"), shared);
}

TEST_F(InspectDoctorTest, stuckBusIsNotReachable) {
  const BrokenBus bus(BusStage::greeting);
  setBus(bus.address());
  EXPECT_FALSE(look(0).flag("/bus/reachable"));
}

TEST_F(InspectDoctorTest, groupContainerIsReported) {
  command.environment.erase("VELMORA_GROUP_CONTAINER");
  for (const auto& [source, root] : {std::pair("fallback", "Velmora"),
                                     std::pair("groupContainer", "group.io.tolvane.Velmora")}) {
    const JSONLine line = look(0);
    EXPECT_EQ(line.text("/root/source"), source);
    EXPECT_EQ(line.text("/root/path"), home.dataHome() / root / "Warp");
    std::filesystem::create_directories(home.dataHome() / "group.io.tolvane.Velmora");
  }
}

TEST_F(InspectDoctorTest, filesInPlaceOfDirectoriesAreObstacles) {
  writeFile(home.requestDirectory(), "");
  writeFile(mirror(), "");
  const JSONLine line = look(1);
  EXPECT_FALSE(line.flag("/ready"));
  EXPECT_EQ(line.texts("/obstacles"), (Names{"mirrorUnreadable", "handoffNotWritable"}));
  EXPECT_FALSE(line.has("/handoff/requests"));
  EXPECT_EQ(line.text("/mirror/error/message"), "Not a directory");
}

TEST_F(InspectDoctorTest, unwritableRequestDirectoryIsAnObstacle) {
  std::filesystem::create_directories(home.requestDirectory());
  std::filesystem::permissions(home.requestDirectory(), std::filesystem::perms(0555));
  runAs(nobody);
  EXPECT_EQ(look(1).texts("/obstacles"), Names{"handoffNotWritable"});
}

TEST_F(InspectDoctorTest, placesThatMayNotBeLookedAtAreNotMissing) {
  std::filesystem::create_directories(sharedRoot());
  lockOut(sharedRoot());
  const JSONLine line = look(1);
  for (const std::string place : {"/mirror", "/index", "/handoff"}) {
    EXPECT_TRUE(line.isNull(place + "/exists")) << place;
    EXPECT_EQ(line.text(place + "/error/message"), "Permission denied") << place;
  }
}

TEST_F(InspectDoctorTest, containerThatMayNotBeLookedAtIsNotMissing) {
  command.environment.erase("VELMORA_GROUP_CONTAINER");
  std::filesystem::create_directories(home.dataHome());
  lockOut(home.dataHome());
  const JSONLine line = look(1);
  EXPECT_EQ(line.text("/root/source"), "fallback");
  EXPECT_EQ(line.text("/root/error/message"), "Permission denied");
}

TEST_F(InspectDoctorTest, damagedRecordsAreNotes) {
  writeFile(mirror() / "a.json", "");
  writeFile(index(), "");
  const JSONLine line = look(0);
  EXPECT_EQ(line.texts("/notes"),
            (Names{"indexUnusable", "invalidManifests", "busUnreachable", "applicationNotFound"}));
  EXPECT_EQ(line.number("/mirror/refused"), 1U);
  EXPECT_EQ(line.text("/index/error/kind"), "dataCorrupted");
}

}  // namespace

}  // namespace velmora::process
