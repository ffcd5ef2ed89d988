// velmora-warp-inspect check: real files, valid and hostile.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/InspectTest.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <sys/stat.h>

#include <filesystem>

namespace velmora::process {

namespace {

using Names = std::vector<std::string>;

class InspectCheckTest : public InspectTest {
 protected:
  std::string write(std::string_view name, std::string_view text) const {
    const std::filesystem::path file = home.path() / name;
    writeFile(file, text);
    return file;
  }

  void expectUnreadable(const std::string& file, const std::string& message) {
    const JSONLine line = onlyLine({"check", "--", file}, 1);
    EXPECT_EQ(line.keys(), (Names{"file", "kind", "valid", "error"}));
    EXPECT_EQ(line.keys("/error"), (Names{"kind", "message"}));
    EXPECT_EQ(line.text("/error/kind"), "unreadable");
    EXPECT_EQ(line.text("/error/message"), message);
  }
};

TEST_F(InspectCheckTest, validFilesOfEveryKindAreSummarised) {
  VelmoraWarpSharedManifest manifest = manifestOf("/a", "W1");
  manifest.entries.append(entryOf("/a/b"));
  const Names files = {write("W1.json", encodeManifest(manifest)),
                       write("destroyed-manifest-index.json", indexJSON({tombstoneOf(manifest)})),
                       write(".velmora-warped.json", markerJSON("W1"))};
  const std::vector<JSONLine> lines = inspectAsJSON({"check", files[0], files[1], files[2]}, 0);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0].text("/file"), files[0]);
  EXPECT_EQ(lines[0].number("/manifest/entries"), 1U);
  EXPECT_EQ(lines[1].number("/index/records"), 1U);
  EXPECT_EQ(lines[2].text("/marker/warpID"), "W1");
}

TEST_F(InspectCheckTest, oneInvalidFileAmongValidOnesIsEnough) {
  write("a.json", "{\n\"version\": 5}");
  write("m", markerJSON("W1"));
  EXPECT_EQ(inspect({"check", "a.json"}, 1).output,
            "invalid  manifest  a.json\n"
            "         line 2, column 12: dataCorrupted at version: "
            "Unsupported shared Warp manifest version.\n");
  EXPECT_EQ(inspect({"check", "--kind=marker", "m"}, 0).output,
            "valid    marker    m\n         Warp W1\n");
  const std::vector<JSONLine> lines =
      inspectAsJSON({"check", "--kind=marker", "m", "a.json", "m"}, 1);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_TRUE(lines[0].flag("/valid"));
  EXPECT_FALSE(lines[1].flag("/valid"));
  EXPECT_TRUE(lines[2].flag("/valid"));
}

TEST_F(InspectCheckTest, otherThanARegularFileIsUnreadable) {
  expectUnreadable("/dev/zero", "Invalid argument");
  expectUnreadable(home.makeFolder("a.json"), "Is a directory");
  expectUnreadable("", "No such file or directory");
  expectUnreadable(write("file", "") + "/a", "Not a directory");
  expectUnreadable(std::string(5000, 'a'), "File name too long");
  const std::string huge = write("huge.json", "");
  std::filesystem::resize_file(huge, std::uintmax_t{1} << 42);
  expectUnreadable(huge, "File too large");
}

TEST_F(InspectCheckTest, fileMayBeAStream) {
  const std::string marker = write("m", "{\n\"warpID\":\"W1\"}");
  const std::string fault = write("fault", "{\n!}");
  // Standard input as a pipe and as a file, a pipe of the shell, and a pipe with a name.
  const std::string check = R"("$0" check --json --kind=marker )";
  const struct {
    std::string script;
    std::string file;
  } rows[] = {{"cat FILE | " + check + "-", "-"},
              {check + "- < FILE", "-"},
              {"cat FILE | " + check + "/dev/stdin", "/dev/stdin"},
              {check + "<(cat FILE)", "/dev/fd/63"},
              {"mkfifo p; cat FILE > p & " + check + "p; rm p", "p"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.script);
    const auto lineFor = [&](const std::string& content) {
      command.arguments = {"bash", "-c", substituted(row.script, "FILE", content),
                           VELMORA_TEST_INSPECT_PROGRAM};
      return JSONLine(run({}).output);
    };
    EXPECT_EQ(lineFor(marker).text("/file"), row.file);
    EXPECT_EQ(lineFor(marker).text("/marker/warpID"), "W1");
    EXPECT_EQ(lineFor(fault).number("/error/line"), 2U);
  }
}

TEST_F(InspectCheckTest, closedStandardInputIsUnreadable) {
  command.arguments = {"sh", "-c", R"(exec "$0" "$@" <&-)", VELMORA_TEST_INSPECT_PROGRAM};
  expectUnreadable("-", "Bad file descriptor");
}

TEST_F(InspectCheckTest, listHasRegularFilesOnly) {
  ASSERT_EQ(::mkfifo((home.path() / "pipe").c_str(), 0600), 0);
  write("-", markerJSON("W1"));
  command.input = std::string("pipe\0-\0", 7);
  const std::vector<JSONLine> lines =
      inspectAsJSON({"check", "--kind=marker", "--files0-from=-"}, 1);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].text("/error/message"), "Invalid argument");
  EXPECT_EQ(lines[1].text("/marker/warpID"), "W1");
}

TEST_F(InspectCheckTest, fileWithoutPermissionIsUnreadable) {
  const std::string file = write("a.json", "{}");
  std::filesystem::permissions(file, std::filesystem::perms::none);
  runAs(nobody);
  expectUnreadable(file, "Permission denied");
}

TEST_F(InspectCheckTest, hostileNamesAndContentsAreEscaped) {
  const std::string name =
      "a\n\x1b[2J\x9b"
      "31m\xff.json";
  write(name, markerJSON("\x1b[2J\n\u009b\u202e\u202c"));
  EXPECT_EQ(inspect({"check", "--kind", "marker", name}, 0).output,
            "valid    marker    a\\n\\u{1b}[2J\\x9b31m\\xff.json\n"
            "         Warp \\u{1b}[2J\\n\\u{9b}\\u{202e}\\u{202c}\n");
  EXPECT_EQ(onlyLine({"check", "--kind", "marker", name}, 0).text("/file"),
            "a\n\x1b[2J\uFFFD31m\uFFFD.json");
}

TEST_F(InspectCheckTest, pathsAreUsedByTheirBytesAndLinksAreFollowed) {
  write("cafe\u0301.json", markerJSON("decomposed"));
  write("caf\u00e9.json", markerJSON("composed"));
  home.makeFolder("deep/inner");
  write("folders/deep/m", markerJSON("linked"));
  std::filesystem::create_directory_symlink("folders/deep/inner", home.path() / "link");
  const std::vector<JSONLine> lines = inspectAsJSON(
      {"check", "--kind=marker", "cafe\u0301.json", "caf\u00e9.json", "link/../m"}, 0);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0].text("/marker/warpID"), "decomposed");
  EXPECT_EQ(lines[0].text("/file"), "cafe\u0301.json");
  EXPECT_EQ(lines[1].text("/marker/warpID"), "composed");
  EXPECT_EQ(lines[2].text("/marker/warpID"), "linked");
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
  command.input = "";
  EXPECT_EQ(inspect({"check", "--files0-from=-"}, 0).output, "");
  command.arguments = {"sh", "-c", R"(exec "$0" "$@" </)", VELMORA_TEST_INSPECT_PROGRAM};
  expectCancelled(run({"check", "--files0-from=-"}), 64,
                  "velmora-warp-inspect: cannot read standard input: Is a directory\n");
}

}  // namespace

}  // namespace velmora::process
