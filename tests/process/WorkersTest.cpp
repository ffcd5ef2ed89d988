// --workers: so many threads may read, and the answers are the same.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/ProcessTest.h"
#include "tests/process/Trace.h"

namespace velmora::process {

namespace {

TEST_F(ProcessTest, workersChangeNothing) {
  // One manifest of many entries, which makes the mirror worth workers, and others of warped
  // folders and of ordinary ones, and files that are none.
  const std::filesystem::path mirror = home.container() / "Warp" / "ManifestMirror";
  std::vector<std::string> items;
  std::vector<std::string> ordinary;
  for (int number = 0; number <= 40; ++number) {
    const std::string name = std::to_string(number);
    const std::string folder = home.makeFolder("folder " + name);
    VelmoraWarpSharedManifest manifest = manifestOf(folder, "warp " + name);
    for (int entry = 0; entry < (number == 0 ? 2000 : 2); ++entry) {
      manifest.entries.append(entryOf(folder + "/" + std::to_string(entry)));
    }
    const bool isManifest = number % 5 != 1;
    const bool isWarped = isManifest && number % 3 == 0;
    writeFile(mirror / (name + ".json"), isManifest ? encodeManifest(manifest) : "{\"version\":");
    if (isWarped) {
      writeFile(folder + "/.velmora-warped.json", markerJSON("warp " + name));
    } else {
      ordinary.push_back(folder);
    }
    items.push_back(folder);
  }
  const auto threadsOf = [&](std::vector<std::string> question, const std::string& workers) {
    const std::filesystem::path trace = home.path() / "trace";
    command.arguments = tracingCommand(trace, "?clone,?clone3", {});
    question.push_back("--workers=" + workers);
    run(question);
    return callsIn(trace).size();
  };
  std::vector<std::string> answers;
  for (const char* workers : {"--workers=1", "--workers=2", "--workers=8"}) {
    command.arguments = {VELMORA_TEST_PROGRAM, workers, "--"};
    expectHandedOver(run(items), ordinary);
    std::filesystem::remove_all(home.requestDirectory());
    command.arguments = {VELMORA_TEST_INSPECT_PROGRAM};
    std::string answer;
    for (const char* question : {"list", "doctor"}) {
      const Outcome outcome = run({question, "--json", workers});
      EXPECT_EQ(outcome.exitStatus, 0);
      EXPECT_EQ(outcome.error, "");
      answer += outcome.output;
    }
    EXPECT_FALSE(answer.empty());
    answers.push_back(answer);
  }
  // The leak checker cannot work in a traced process.
  command.environment["ASAN_OPTIONS"] += ":detect_leaks=0";
  for (const std::vector<std::string>& question :
       {std::vector<std::string>{VELMORA_TEST_PROGRAM, "--check", ordinary.front()},
        {VELMORA_TEST_INSPECT_PROGRAM, "list"}}) {
    EXPECT_LT(threadsOf(question, "1"), threadsOf(question, "8")) << question.front();
  }
  EXPECT_EQ(answers, std::vector<std::string>(3, answers.front()));
}

}  // namespace

}  // namespace velmora::process
