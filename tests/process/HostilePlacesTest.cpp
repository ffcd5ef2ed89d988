// Anything may lie at each place that the programs read. Whatever it is, the programs end soon,
// take little memory, and never write more or less than one whole request for each success. No
// folder in a warped one is warped as long as the warped folder's own files are sound.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/ProcessTest.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/Repeated.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <functional>

namespace velmora::process {

namespace {

namespace filesystem = std::filesystem;

/// What lies at a place. The place is empty before, and its parent directory exists.
struct HostileKind {
  const char* name;
  std::function<void(const std::string& path)> make;
};

void write(const std::string& path, const std::string& text) { writeFile(path, text); }

void makeWithMode(const std::string& path, bool isDirectory, int mode) {
  if (isDirectory) {
    filesystem::create_directory(path);
  } else {
    write(path, "{}");
  }
  filesystem::permissions(path, filesystem::perms(mode));
}

const std::vector<HostileKind> kinds = {
    {"nothing", [](auto&) {}},
    {"empty file", [](auto& path) { write(path, ""); }},
    {"one byte", [](auto& path) { write(path, "\xFF"); }},
    {"empty directory", [](auto& path) { filesystem::create_directory(path); }},
    {"directory of the same name",
     [](auto& path) {
       filesystem::create_directories(path + "/" + filesystem::path(path).filename().string());
     }},
    {"FIFO", [](auto& path) { require(::mkfifo(path.c_str(), 0666) == 0, path); }},
    {"socket",
     [](auto& path) {
       // The path of a socket must be short.
       const filesystem::path back = filesystem::current_path();
       filesystem::current_path(filesystem::path(path).parent_path());
       makeSocket(filesystem::path(path).filename());
       filesystem::current_path(back);
     }},
    {"unreadable file", [](auto& path) { makeWithMode(path, false, 0); }},
    {"unreadable directory", [](auto& path) { makeWithMode(path, true, 0); }},
    {"directory without search", [](auto& path) { makeWithMode(path, true, 0666); }},
    {"directory without list", [](auto& path) { makeWithMode(path, true, 0111); }},
    {"link to nothing", [](auto& path) { link("/nowhere/at/all", path); }},
    {"link to itself", [](auto& path) { link(filesystem::path(path).filename(), path); }},
    {"link to its directory", [](auto& path) { link(".", path); }},
    {"link to the root", [](auto& path) { link("/", path); }},
    {"link to zeros", [](auto& path) { link("/dev/zero", path); }},
    {"link to a full device", [](auto& path) { link("/dev/full", path); }},
    {"link to a terminal", [](auto& path) { link("/dev/tty", path); }},
    {"link to random bytes", [](auto& path) { link("/dev/random", path); }},
    {"link to a process's memory", [](auto& path) { link("/proc/self/mem", path); }},
    {"link to a file of unknown length", [](auto& path) { link("/proc/self/environ", path); }},
    {"gigabyte of zeros", [](auto& path) { makeSparseFile(path, off_t{1} << 30); }},
    {"brackets", [](auto& path) { write(path, repeated("[", 3'000'000)); }},
    {"many short lines", [](auto& path) { write(path, repeated("a\n", 200'000)); }},
    {"long text", [](auto& path) { write(path, "{\"warpID\":\"" + repeated("x", 3'000'000)); }},
    {"dense array",
     [](auto& path) {
       write(path, "{\"warpID\":\"w\",\"x\":[" + repeated("[],", 1'000'000) + "[]]}");
     }},
};

class HostilePlacesTest : public ProcessTest {
 protected:
  HostilePlacesTest() {
    writeFile(home.configHome() / "group.io.tolvane.Velmora" / "defaults.conf",
              "[Defaults]\nVelmoraSelectedLanguage.v1=ja\n");
    installApplication("Exec=/bin/true\n");
    writeFile(mirror / "w.json", encodeManifest(manifestOf(warped, "w")));
    writeFile(mirror / "other.json", encodeManifest(manifestOf("/elsewhere", "other")));
    writeFile(home.container() / "Warp" / "destroyed-manifest-index.json", indexJSON({}));
    writeFile(warped + "/.velmora-warped.json", markerJSON("w"));
    home.makeFolder("warped/inside");
    filesystem::create_directory(home.requestDirectory());
    runAs(nobody);
    filesystem::copy(VELMORA_TEST_INSPECT_PROGRAM, home.path() / "inspect");
    // The copy of the program comes last.
    command.arguments.insert(command.arguments.end() - 1, {"timeout", "--signal=KILL", limit});
    filesystem::permissions(home.requestDirectory(), filesystem::perms(0777));
    filesystem::permissions(home.container(), filesystem::perms(0777));
    filesystem::permissions(home.container() / "Warp", filesystem::perms(0777));
  }

  /// Puts each kind at `place`, and takes it away again.
  void tryEachKind(const filesystem::path& place) {
    const filesystem::path kept = home.path() / "kept";
    const bool exists = filesystem::exists(place);
    if (exists) {
      filesystem::rename(place, kept);
    }
    for (std::size_t number = firstKind_; number < kinds.size(); number += kindStep) {
      const HostileKind& kind = kinds[number];
      SCOPED_TRACE(place.lexically_relative(home.path()).string() + ": " + kind.name);
      kind.make(place);
      tryPrograms();
      removeAll(place);
    }
    firstKind_ = (firstKind_ + 1) % kindStep;
    if (exists) {
      filesystem::rename(kept, place);
    }
  }

  const std::string warped = home.makeFolder("warped");
  const std::string plain = home.makeFolder("plain");
  const filesystem::path mirror = home.container() / "Warp" / "ManifestMirror";
  /// Whether the places that tell that `warped` is warped are sound.
  bool isWarpSound = true;

 private:
  static void removeAll(const filesystem::path& path) {
    if (filesystem::is_directory(filesystem::symlink_status(path))) {
      filesystem::permissions(path, filesystem::perms(0777));
    }
    filesystem::remove_all(path);
  }

  /// The requests in the container, which are removed.
  std::vector<Request> takeRequests() const {
    std::vector<Request> requests;
    std::error_code error;
    for (const auto& entry : filesystem::directory_iterator(home.requestDirectory(), error)) {
      const std::string name = entry.path().filename();
      EXPECT_FALSE(name.ends_with(".partial")) << name;
      if (hasForm(name, requestNameForm)) {
        requests.push_back(parseRequest(readFile(entry.path())));
        filesystem::remove(entry.path());
      }
    }
    return requests;
  }

  Outcome tryAction(const std::vector<std::string>& arguments) {
    Command action = command;
    action.arguments.insert(action.arguments.end(), arguments.begin(), arguments.end());
    const Outcome outcome = process::run(action);
    EXPECT_TRUE(outcome.exitStatus == 0 || outcome.exitStatus == 1 || outcome.exitStatus == 2)
        << ::testing::PrintToString(outcome.exitStatus) << outcome.error;
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.error.find("GLib"), std::string::npos) << outcome.error;
    expectLittleMemory(outcome);
    const std::vector<Request> requests = takeRequests();
    EXPECT_LE(requests.size(), 1);
    if (!requests.empty()) {
      EXPECT_EQ(outcome.exitStatus, 0);
      EXPECT_EQ(requests[0].folderPaths, std::vector<std::string>{arguments.back()});
    }
    return outcome;
  }

  void tryPrograms() {
    tryAction({"--no-notify", plain});
    tryAction({"--no-notify", "--restore", warped});
    const Outcome inside = tryAction({"--no-notify", warped + "/inside"});
    if (isWarpSound) {
      EXPECT_EQ(inside.exitStatus, 1);
    }
    Command inspect = command;
    inspect.arguments.back() = home.path() / "inspect";
    inspect.arguments.emplace_back("doctor");
    const Outcome outcome = process::run(inspect);
    EXPECT_TRUE(outcome.exitStatus == 0 || outcome.exitStatus == 1)
        << ::testing::PrintToString(outcome.exitStatus) << outcome.error;
  }

  static void expectLittleMemory(const Outcome& outcome) {
#ifndef VELMORA_TEST_WITH_SANITIZERS
    constexpr long maxPeakMemory = 64L * 1024;
    EXPECT_LE(outcome.peakMemory, maxPeakMemory);
#else
    static_cast<void>(outcome);
#endif
  }

#ifndef VELMORA_TEST_WITH_SANITIZERS
  /// In seconds. Only a program that hangs takes so long.
  static constexpr const char* limit = "3";
  static constexpr std::size_t kindStep = 1;
#else
  static constexpr const char* limit = "30";
  /// A program with sanitizers starts slowly. So each place gets some of the kinds only.
  static constexpr std::size_t kindStep = 4;
#endif
  std::size_t firstKind_ = 0;
};

TEST_F(HostilePlacesTest, selectionAndMarkers) {
  tryEachKind(plain);
  tryEachKind(plain + "/.velmora-warped.json");
  isWarpSound = false;
  tryEachKind(warped + "/.velmora-warped.json");
  tryEachKind(home.folders());
}

TEST_F(HostilePlacesTest, mirror) {
  tryEachKind(mirror / "other.json");
  tryEachKind(mirror / "new.json");
  isWarpSound = false;
  tryEachKind(mirror / "w.json");
  tryEachKind(mirror);
}

TEST_F(HostilePlacesTest, container) {
  tryEachKind(home.container() / "Warp" / "destroyed-manifest-index.json");
  tryEachKind(home.requestDirectory());
  isWarpSound = false;
  tryEachKind(home.container() / "Warp");
  tryEachKind(home.container());
}

TEST_F(HostilePlacesTest, settingsAndMessages) {
  tryEachKind(home.configHome());
  tryEachKind(home.configHome() / "group.io.tolvane.Velmora" / "defaults.conf");
  const filesystem::path messages = home.path() / "resources" / "ja.lproj";
  tryEachKind(messages);
  tryEachKind(messages / "Localizable.strings");
}

TEST_F(HostilePlacesTest, applicationAndBus) {
  tryEachKind(home.dataHome() / "applications");
  tryEachKind(home.dataHome() / "applications" / "io.tolvane.Velmora.desktop");
  tryEachKind(home.runtimeDirectory() / "bus");
}

}  // namespace

}  // namespace velmora::process
