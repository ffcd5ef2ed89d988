// The libraries that the programs load, and when. Loading the desktop's libraries would take most
// of the time of --check.

#include "tests/process/ProcessTest.h"
#include "tests/process/Trace.h"

#include <algorithm>

namespace velmora::process {

namespace {

class LoadedLibrariesTest : public ProcessTest {
 protected:
  LoadedLibrariesTest() {
    // The leak checker does not work in a traced process.
    command.environment["ASAN_OPTIONS"] += ":detect_leaks=0";
  }

  /// The files that the program opens. Expects this exit status.
  std::vector<TracedCall> opened(const std::vector<std::string>& programAndArguments,
                                 int exitStatus) {
    const std::filesystem::path trace = home.path() / "trace";
    command.arguments = tracingCommand(trace, "?open,openat", {});
    EXPECT_EQ(run(programAndArguments).exitStatus, exitStatus);
    return callsIn(trace);
  }

  static bool isAnyOf(const std::vector<TracedCall>& calls, const std::string& library) {
    return std::ranges::any_of(calls, [&](const TracedCall& call) {
      return call.text.find("/" + library) != std::string::npos;
    });
  }

  static void expectNoneOfTheDesktop(const std::vector<TracedCall>& calls) {
    EXPECT_TRUE(isAnyOf(calls, "libc.so"));
    for (const char* library : {"libgio-", "libgobject-", "libglib-"}) {
      EXPECT_FALSE(isAnyOf(calls, library)) << library;
    }
  }

  /// Lets the system's loader find an empty file under GIO's name.
  std::string replaceGIO() {
    const std::filesystem::path library = home.path() / "lib" / "libgio-2.0.so.0";
    writeFile(library, "");
    command.environment["LD_LIBRARY_PATH"] = library.parent_path();
    return library;
  }

  const std::string folder = home.makeFolder("A");
};

TEST_F(LoadedLibrariesTest, queriesLoadNoDesktopLibrary) {
  expectNoneOfTheDesktop(opened({VELMORA_TEST_PROGRAM, "--check", folder}, 0));
  expectNoneOfTheDesktop(opened({VELMORA_TEST_PROGRAM, "--check", "--restore", folder}, 1));
  expectNoneOfTheDesktop(opened({VELMORA_TEST_INSPECT_PROGRAM, "list"}, 0));
  expectNoneOfTheDesktop(opened({VELMORA_TEST_INSPECT_PROGRAM, "explain", "--warp", folder}, 0));
}

TEST_F(LoadedLibrariesTest, handoffLoadsTheDesktopLibraries) {
  EXPECT_TRUE(isAnyOf(opened({VELMORA_TEST_PROGRAM, folder}, 0), "libgio-"));
}

TEST_F(LoadedLibrariesTest, checkWorksWithoutGIO) {
  replaceGIO();
  expectCancelled(run({"--check", folder}), 0, "");
  expectCancelled(run({"--check", "--restore", folder}), 1, "");
}

TEST_F(LoadedLibrariesTest, handoffReportsThatGIOIsUnusable) {
  const std::string library = replaceGIO();
  const Outcome outcome = run({folder});
  expectCancelled(outcome, 2,
                  "velmora-finder-action[" + std::to_string(outcome.process) +
                      "]: Velmora Finder Action handoff failed: " + library + ": file too short\n" +
                      message("en", warpHandoffFailed) + "\n");
}

TEST_F(LoadedLibrariesTest, unsuitableSelectionIsRefusedWithoutGIO) {
  replaceGIO();
  expectCancelled(run({home.makeFile("file")}), 1, message("en", chooseWarpFolders) + "\n");
}

TEST_F(LoadedLibrariesTest, doctorReportsThatGIOIsUnusable) {
  const std::string library = replaceGIO();
  command.arguments = {VELMORA_TEST_INSPECT_PROGRAM};
  expectCancelled(run({"doctor"}), 74, "velmora-warp-inspect: " + library + ": file too short\n");
}

}  // namespace

}  // namespace velmora::process
