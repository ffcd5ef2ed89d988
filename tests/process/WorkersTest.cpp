// --workers: how many threads a program starts to read the mirror and the markers, and that nobody
// can tell by its answers.

#include "tests/support/RowName.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/process/ProcessTest.h"
#include "tests/process/Trace.h"

#include <algorithm>

namespace velmora::process {

namespace {

class WorkersTest : public ProcessTest {
 protected:
  std::filesystem::path mirror() const { return home.container() / "Warp" / "ManifestMirror"; }

  void addManifest(const std::string& fileName, const std::string& folder, int entryCount) const {
    VelmoraWarpSharedManifest manifest = manifestOf(folder, "warp " + fileName);
    manifest.createdAt = {.secondsSinceReferenceDate = static_cast<double>(fileName.size() % 2)};
    for (int entry = 0; entry < entryCount; ++entry) {
      manifest.entries.append(entryOf(folder + "/" + std::to_string(entry)));
    }
    writeFile(mirror() / (fileName + ".json"), encodeManifest(manifest));
  }

  /// Manifests of warped folders and of others, and files that are none. With a first one of many
  /// entries, they are worth helpers.
  void fillMirror(int entriesOfTheFirst) {
    addManifest("0", home.makeFolder("first"), entriesOfTheFirst);
    for (int number = 1; number <= 40; ++number) {
      const std::string name = std::to_string(number);
      const std::string folder = home.makeFolder("folder " + name);
      if (number % 5 == 0) {
        writeFile(mirror() / (name + ".json"), "{\"version\":");
        continue;
      }
      addManifest(name, folder, number % 3);
      if (number % 3 == 0) {
        writeFile(folder + "/.velmora-warped.json", markerJSON("warp " + name));
      }
    }
    std::filesystem::create_directory(mirror() / "directory.json");
  }

  /// Warped folders, so many that their manifests are worth a helper, and their markers another.
  void addWarpedFolders() {
    for (int number = 100; number < 700; ++number) {
      const std::string name = std::to_string(number);
      const std::string folder = home.makeFolder("folder " + name);
      addManifest(name, folder, 0);
      writeFile(folder + "/.velmora-warped.json", markerJSON("warp " + name));
      tombstones.push_back(tombstoneOf(manifestOf(folder, "warp " + name)));
    }
  }

  /// How many threads the check of a folder starts.
  std::ptrdiff_t threadsStarted(const std::vector<std::string>& options) {
    const std::filesystem::path trace = home.path() / "trace";
    std::vector<std::string> arguments = {VELMORA_TEST_PROGRAM, "--check", "/"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    EXPECT_EQ(runTraced(trace, {}, arguments).exitStatus, 0);
    // A call that a system does not know is made in another way.
    return std::ranges::count_if(callsIn(trace), [](const TracedCall& call) {
      return call.text.find("= -1 ") == std::string::npos;
    });
  }

  /// Runs a program with the calls that start threads written to `trace`.
  Outcome runTraced(const std::filesystem::path& trace, const std::vector<std::string>& injections,
                    const std::vector<std::string>& programAndArguments) {
    Command complete = command;
    // The leak checker cannot work in a traced process.
    complete.environment["ASAN_OPTIONS"] += ":detect_leaks=0";
    complete.arguments = tracingCommand(trace, "?clone,?clone3", injections);
    complete.arguments.insert(complete.arguments.end(), programAndArguments.begin(),
                              programAndArguments.end());
    return process::run(complete);
  }

  static constexpr int enoughForEightWorkers = 2000;
  /// Of the warped folders.
  std::vector<VelmoraWarpSharedDestroyedManifestRecord> tombstones;
};

TEST_F(WorkersTest, areStartedForALargeMirror) {
  fillMirror(0);
  const std::ptrdiff_t without = threadsStarted({"--workers", "8"});
  EXPECT_EQ(threadsStarted({}), without);
  fillMirror(enoughForEightWorkers);
  EXPECT_EQ(threadsStarted({"--workers", "1"}), without);
  const std::ptrdiff_t withOne = threadsStarted({"--workers", "2"});
  // Not by how many: ThreadSanitizer starts one of its own with the first.
  EXPECT_GT(withOne, without);
  EXPECT_EQ(threadsStarted({"--workers", "8"}), withOne + 6);
}

TEST_F(WorkersTest, areStartedForManyMarkers) {
  addWarpedFolders();
  const std::filesystem::path index = home.container() / "Warp" / "destroyed-manifest-index.json";
  const std::ptrdiff_t without = threadsStarted({"--workers", "1"});
  writeFile(index, indexJSON(tombstones));
  const std::ptrdiff_t forTheMirror = threadsStarted({"--workers", "2"});
  EXPECT_GT(forTheMirror, without);
  std::filesystem::remove(index);
  EXPECT_EQ(threadsStarted({"--workers", "2"}), forTheMirror + 1);
}

TEST_F(WorkersTest, areNotMissedWhereNoThreadCanBeStarted) {
  addWarpedFolders();
  const std::filesystem::path trace = home.path() / "trace";
  const auto list = [&](const std::vector<std::string>& injections) {
    const Outcome outcome =
        runTraced(trace, injections, {VELMORA_TEST_INSPECT_PROGRAM, "list", "--workers", "2"});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.error;
    return outcome.output;
  };
  const std::string expected = list({});
  EXPECT_EQ(injectedFaults(trace), 0);
  EXPECT_EQ(list({"?clone,?clone3:error=EAGAIN"}), expected);
  // One for the mirror and one for the markers, besides that of ThreadSanitizer.
  EXPECT_GE(injectedFaults(trace), 2);
}

TEST_F(WorkersTest, leaveTheListAsItIs) {
  fillMirror(enoughForEightWorkers);
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"list", "--json"}, {"list"}, {"doctor", "--json"}}) {
    command.arguments = {VELMORA_TEST_INSPECT_PROGRAM};
    const auto answer = [&](const std::string& workers) {
      std::vector<std::string> all = arguments;
      all.push_back("--workers=" + workers);
      const Outcome outcome = run(all);
      EXPECT_EQ(outcome.exitStatus, 0) << outcome.error;
      EXPECT_EQ(outcome.error, "");
      return outcome.output;
    };
    const std::string expected = answer("1");
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(answer("2"), expected);
    EXPECT_EQ(answer("8"), expected);
  }
}

TEST_F(WorkersTest, leaveTheRequestAsItIs) {
  fillMirror(enoughForEightWorkers);
  std::vector<std::string> items;
  std::vector<std::string> unwarped;
  for (int number = 1; number <= 40; ++number) {
    items.push_back(home.makeFolder("folder " + std::to_string(number)));
    // Of every fifth, the manifest is none.
    if (number % 3 != 0 || number % 5 == 0) {
      unwarped.push_back(items.back());
    }
  }
  for (const char* workers : {"1", "2", "8"}) {
    std::vector<std::string> arguments = {"--workers", workers, "--"};
    arguments.insert(arguments.end(), items.begin(), items.end());
    expectCompleted(run(arguments));
    EXPECT_EQ(onlyRequest().folderPaths, unwarped) << workers;
    std::filesystem::remove_all(home.requestDirectory());
  }
}

struct RefusedNumber {
  const char* name;
  const char* value;
  const char* message;
};

class WorkersUsageTest : public WorkersTest, public ::testing::WithParamInterface<RefusedNumber> {};

TEST_P(WorkersUsageTest, isAnErrorOfThatLine) {
  const std::string folder = home.makeFolder("A");
  expectCancelled(run({"--workers", GetParam().value, folder}), 64,
                  std::string("velmora-finder-action: ") + GetParam().message + "\n");
  command.arguments = {VELMORA_TEST_INSPECT_PROGRAM};
  expectCancelled(run({"explain", "--warp", std::string("--workers=") + GetParam().value, folder}),
                  64, std::string("velmora-warp-inspect: ") + GetParam().message + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, WorkersUsageTest,
    ::testing::Values(
        RefusedNumber{"none", "0", "--workers takes a number from 1 to 64, not 0"},
        RefusedNumber{"tooMany", "65", "--workers takes a number from 1 to 64, not 65"},
        RefusedNumber{"negative", "-1", "--workers takes a number from 1 to 64, not -1"},
        RefusedNumber{"word", "all", "--workers takes a number from 1 to 64, not all"},
        RefusedNumber{"lineBreak", "1\n", "--workers takes a number from 1 to 64, not 1?"}),
    RowName());

}  // namespace

}  // namespace velmora::process
