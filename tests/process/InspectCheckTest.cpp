// velmora-warp-inspect check: real files, sound and hostile.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/InspectTest.h"

#include <sys/stat.h>

#include <filesystem>

namespace velmora::process {

namespace {

class InspectCheckTest : public InspectTest {
 protected:
  std::string write(std::string_view name, std::string_view text) const {
    const std::filesystem::path file = home.path() / name;
    writeFile(file, text);
    return file;
  }

  JSONLine only(const std::vector<std::string>& arguments, int exitStatus) {
    std::vector<JSONLine> lines = inspectAsJSON(arguments, exitStatus);
    EXPECT_EQ(lines.size(), 1U);
    return std::move(lines.at(0));
  }

  void expectUnreadable(const std::string& file, const std::string& message) {
    const JSONLine line = only({"check", "--", file}, 1);
    EXPECT_EQ(line.keys(), (std::vector<std::string>{"file", "kind", "valid", "error"}));
    EXPECT_EQ(line.keys("/error"), (std::vector<std::string>{"kind", "message"}));
    EXPECT_EQ(line.text("/error/kind"), "unreadable");
    EXPECT_EQ(line.text("/error/message"), message);
  }
};

TEST_F(InspectCheckTest, validFilesOfEveryKindAreSummarised) {
  VelmoraWarpSharedManifest manifest = manifestOf("/a", "W1");
  manifest.entries.append(entryOf("/a/b"));
  const std::vector<std::string> files = {
      write("W1.json", encodeManifest(manifest)),
      write("destroyed-manifest-index.json", indexJSON({tombstoneOf(manifest)})),
      write(".velmora-warped.json", markerJSON("W1"))};
  const std::vector<JSONLine> lines = inspectAsJSON({"check", files[0], files[1], files[2]}, 0);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0].keys(), (std::vector<std::string>{"file", "kind", "valid", "manifest"}));
  EXPECT_EQ(lines[0].keys("/manifest"),
            (std::vector<std::string>{"warpID", "manifestKey", "originalFolderPath", "createdAt",
                                      "status", "entries", "samples"}));
  EXPECT_EQ(lines[0].text("/file"), files[0]);
  EXPECT_EQ(lines[0].text("/manifest/createdAt"), "2001-01-01T00:00:00Z");
  EXPECT_EQ(lines[0].number("/manifest/entries"), 1U);
  EXPECT_EQ(lines[1].text("/kind"), "index");
  EXPECT_EQ(lines[1].number("/index/records"), 1U);
  EXPECT_EQ(lines[2].text("/kind"), "marker");
  EXPECT_EQ(lines[2].text("/marker/warpID"), "W1");
}

TEST_F(InspectCheckTest, peopleGetTwoLinesAFile) {
  write("a.json", "{\n\"version\": 5}");
  write("m", markerJSON("W1"));
  EXPECT_EQ(inspect({"check", "a.json"}, 1).output,
            "invalid  manifest  a.json\n"
            "         line 2, column 12: dataCorrupted at version: "
            "Unsupported shared Warp manifest version.\n");
  EXPECT_EQ(inspect({"check", "--kind=marker", "m"}, 0).output,
            "valid    marker    m\n"
            "         Warp W1\n");
}

TEST_F(InspectCheckTest, faultOfAnEntryHasItsPlace) {
  VelmoraWarpSharedManifest manifest = manifestOf("/a", "W1");
  manifest.entries.append(entryOf("/a/b"));
  std::string text = encodeManifest(manifest);
  const std::size_t entries = text.find("\"entries\":");
  const std::size_t size = text.find("\"size\":", entries);
  ASSERT_NE(size, std::string::npos);
  text.insert(size + 7, "\n\"no\"  ,\"was\":");
  const JSONLine line = only({"check", write("W1.json", text)}, 1);
  EXPECT_EQ(line.keys("/error"), (std::vector<std::string>{"kind", "codingPath", "message",
                                                           "byteOffset", "line", "column"}));
  EXPECT_EQ(line.text("/error/kind"), "typeMismatch");
  EXPECT_EQ(line.text("/error/codingPath/0"), "entries");
  EXPECT_EQ(line.number("/error/codingPath/1"), 0U);
  EXPECT_EQ(line.text("/error/codingPath/2"), "size");
  EXPECT_EQ(line.number("/error/byteOffset"), size + 8);
  EXPECT_EQ(line.number("/error/line"), 2U);
  EXPECT_EQ(line.number("/error/column"), 1U);
}

TEST_F(InspectCheckTest, indexWithARepetitionIsCorrupt) {
  const auto tombstone = tombstoneOf(manifestOf("/a", "W1"));
  const JSONLine line =
      only({"check", write("destroyed-manifest-index.json", indexJSON({tombstone, tombstone}))}, 1);
  EXPECT_EQ(line.keys("/error"), (std::vector<std::string>{"kind", "message"}));
  EXPECT_EQ(line.text("/error/kind"), "corruptFile");
}

TEST_F(InspectCheckTest, emptyFileIsNoJSON) {
  const JSONLine line = only({"check", write("a.json", "")}, 1);
  EXPECT_EQ(line.text("/error/kind"), "dataCorrupted");
  EXPECT_EQ(line.texts("/error/codingPath"), std::vector<std::string>());
}

TEST_F(InspectCheckTest, oneInvalidFileAmongValidOnesIsEnough) {
  const std::string valid = write("W1.json", encodeManifest(manifestOf("/a", "W1")));
  const std::vector<JSONLine> lines = inspectAsJSON({"check", valid, write("b", "{"), valid}, 1);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_TRUE(lines[0].flag("/valid"));
  EXPECT_FALSE(lines[1].flag("/valid"));
  EXPECT_TRUE(lines[2].flag("/valid"));
}

TEST_F(InspectCheckTest, whatIsNoRegularFileIsUnreadable) {
  const std::string fifo = home.path() / "fifo.json";
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  expectUnreadable(fifo, "Invalid argument");
  expectUnreadable(home.makeFolder("a.json"), "Is a directory");
  expectUnreadable("/dev/zero", "Invalid argument");
}

TEST_F(InspectCheckTest, whatIsNotThereIsUnreadable) {
  expectUnreadable("missing.json", "No such file or directory");
  expectUnreadable("", "No such file or directory");
  expectUnreadable(write("file", "") + "/a", "Not a directory");
  expectUnreadable(std::string(5000, 'a'), "File name too long");
}

TEST_F(InspectCheckTest, fileOfAHugeClaimedSizeIsUnreadable) {
  const std::string file = write("huge.json", "");
  std::filesystem::resize_file(file, std::uintmax_t{1} << 42);
  expectUnreadable(file, "File too large");
}

TEST_F(InspectCheckTest, fileThatMayNotBeReadIsUnreadable) {
  const std::string file = write("a.json", "{}");
  std::filesystem::permissions(file, std::filesystem::perms::none);
  runWithoutPrivileges();
  expectUnreadable(file, "Permission denied");
}

TEST_F(InspectCheckTest, hostileNamesSteerNothing) {
  const std::string name =
      "a\n\x1b[2J\x9b"
      "31m\xff.json";
  write(name, markerJSON("W1"));
  EXPECT_EQ(inspect({"check", "--kind", "marker", name}, 0).output,
            "valid    marker    a\\n\\u{1b}[2J\uFFFD31m\uFFFD.json\n"
            "         Warp W1\n");
  const JSONLine line = only({"check", "--kind", "marker", name}, 0);
  EXPECT_EQ(line.text("/file"), "a\n\x1b[2J\uFFFD31m\uFFFD.json");
}

TEST_F(InspectCheckTest, namesAreTakenByTheirBytes) {
  write("cafe\u0301.json", markerJSON("decomposed"));
  write("caf\u00e9.json", markerJSON("composed"));
  const std::vector<JSONLine> lines =
      inspectAsJSON({"check", "--kind=marker", "cafe\u0301.json", "caf\u00e9.json"}, 0);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].text("/marker/warpID"), "decomposed");
  EXPECT_EQ(lines[0].text("/file"), "cafe\u0301.json");
  EXPECT_EQ(lines[1].text("/marker/warpID"), "composed");
}

TEST_F(InspectCheckTest, hostileContentSteersNothing) {
  const std::string output =
      inspect({"check", "--kind=marker", write("m", markerJSON("\x1b[2J\n\u009b\u202e\u202c"))}, 0)
          .output;
  EXPECT_NE(output.find("Warp \\u{1b}[2J\\n\\u{9b}\\u{202e}\\u{202c}\n"), std::string::npos)
      << output;
}

TEST_F(InspectCheckTest, relativeNamesFollowLinksAsTheSystemDoes) {
  home.makeFolder("deep/inner");
  write("folders/deep/m", markerJSON("W1"));
  std::filesystem::create_directory_symlink("folders/deep/inner", home.path() / "link");
  EXPECT_EQ(only({"check", "--kind=marker", "link/../m"}, 0).text("/marker/warpID"), "W1");
}

TEST_F(InspectCheckTest, filesMayComeFromStandardInput) {
  write("--json", markerJSON("W1"));
  write("line\nbreak", markerJSON("W2"));
  command.input = std::string("--json\0line\nbreak\0", 18);
  const std::vector<JSONLine> lines =
      inspectAsJSON({"check", "--kind=marker", "--files0-from=-"}, 0);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].text("/marker/warpID"), "W1");
  EXPECT_EQ(lines[1].text("/file"), "line\nbreak");
}

TEST_F(InspectCheckTest, emptyListIsFine) {
  command.input = "";
  EXPECT_EQ(inspect({"check", "--files0-from=-"}, 0).output, "");
}

TEST_F(InspectCheckTest, standardInputThatCannotBeReadIsAnError) {
  command.arguments = {"sh", "-c", R"(exec "$0" "$@" </)", VELMORA_TEST_INSPECT_PROGRAM};
  const Outcome outcome = run({"check", "--files0-from=-"});
  EXPECT_EQ(outcome.exitStatus, 64);
  EXPECT_EQ(outcome.error, "velmora-warp-inspect: cannot read standard input: Is a directory\n");
}

}  // namespace

}  // namespace velmora::process
