// Items as file managers and people write them: hostile names, relative paths, file URLs.

#include "tests/support/RowName.h"
#include "tests/process/ProcessTest.h"

namespace velmora::process {

namespace {

constexpr const char* composed = "caf\u00e9";
constexpr const char* decomposed = "cafe\u0301";

/// Folders below the working directory, the operands, and the folders that arrive.
struct OperandCase {
  const char* name;
  std::vector<std::string> folders;
  std::vector<std::string> operands;
  std::vector<std::string> accepted;
};

class OperandTest : public ProcessTest, public ::testing::WithParamInterface<OperandCase> {
 protected:
  /// "@" in an operand stands for the working directory.
  std::string withDirectory(const std::string& text) const {
    return substituted(text, "@", (home.path() / "folders").native());
  }
};

TEST_P(OperandTest, suitableFoldersArrive) {
  for (const std::string& folder : GetParam().folders) {
    home.makeFolder(folder);
  }
  home.makeFile("file");
  command.workingDirectory = home.path() / "folders";
  std::vector<std::string> arguments = {"--"};
  for (const std::string& operand : GetParam().operands) {
    arguments.push_back(withDirectory(operand));
  }
  std::vector<std::string> accepted;
  for (const std::string& folder : GetParam().accepted) {
    accepted.push_back(withDirectory("@/" + folder));
  }
  const Outcome outcome = run(arguments);
  if (accepted.empty()) {
    return expectCancelled(outcome, 1, message("en", chooseWarpFolders) + "\n");
  }
  expectCompleted(outcome);
  EXPECT_EQ(onlyRequest().folderPaths, accepted);
}

/// A folder that is named as it stands.
OperandCase hostileName(const char* name, const std::string& folder) {
  return {name, {folder}, {folder, "@/" + folder}, {folder}};
}

INSTANTIATE_TEST_SUITE_P(
    Names, OperandTest,
    ::testing::Values(hostileName("brackets", "[a,b]"), hostileName("braces", "{a,b}"),
                      hostileName("dash", "-dash"), hostileName("longOption", "--restore"),
                      hostileName("listOption", "--files0-from=-"), hostileName("oneDash", "-"),
                      hostileName("endOfOptions", "--"), hostileName("percent", "100%25 done"),
                      hostileName("percentAtTheEnd", "100%"), hostileName("format", "%s%n"),
                      hostileName("newline", "two\nlines"), hostileName("tab", "tab\there"),
                      hostileName("control", "\x01\x1b[31m\x7f"),
                      hostileName("doubleQuote", "dq\"q"), hostileName("singleQuote", "it's"),
                      hostileName("dollar", "dollar$HOME"), hostileName("backslash", "back\\slash"),
                      hostileName("shell", "semi;amp&|`id`"), hostileName("blanks", "  blank  "),
                      hostileName("tilde", "~"), hostileName("equals", "a=b"),
                      hostileName("hash", "#hash"), hostileName("question", "what?"),
                      hostileName("japanese", "日本語 フォルダ"),
                      hostileName("emoji", "👩‍👩‍👧"), hostileName("hidden", ".hidden"),
                      hostileName("dots", "..."), hostileName("colon", "a:b")),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Paths, OperandTest,
    ::testing::Values(
        OperandCase{"relative", {"A/B"}, {"A/B"}, {"A/B"}},
        OperandCase{"relativeWithDots", {"A/B", "C"}, {"./A/../C/.", "A//B/"}, {"C", "A/B"}},
        OperandCase{"absoluteWithDots", {"A", "C"}, {"@/A/../C", "@//A"}, {"C", "A"}},
        OperandCase{"empty", {"A"}, {"", "A"}, {"A"}}, OperandCase{"onlyEmpty", {}, {""}, {}},
        OperandCase{"sameFolderTwice", {"A", "B"}, {"A", "B", "A", "@/A/", "A/"}, {"A", "B"}},
        OperandCase{
            "decomposedFirst", {composed, decomposed}, {decomposed, composed}, {decomposed}},
        OperandCase{"composedFirst", {composed, decomposed}, {composed, decomposed}, {composed}},
        OperandCase{"notUTF8", {"A", "\xff\xfe", "B"}, {"A", "\xff\xfe", "B"}, {"A", "B"}},
        OperandCase{"onlyNotUTF8", {"caf\xe9"}, {"caf\xe9", "@/caf\xe9"}, {}},
        OperandCase{"filesAndMissing", {"A"}, {"file", "missing", "A", "file/"}, {"A"}}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    URLs, OperandTest,
    ::testing::Values(
        OperandCase{"plain", {"A"}, {"file://@/A"}, {"A"}},
        OperandCase{"upperCase", {"A"}, {"FILE://@/A"}, {"A"}},
        OperandCase{
            "localhost", {"A", "B"}, {"file://localhost@/A", "file://LocalHost@/B"}, {"A", "B"}},
        OperandCase{"noAuthority", {"A"}, {"file:@/A"}, {"A"}},
        OperandCase{"encoded",
                    {"b c", "100%25 done", "日本", "a#b?c"},
                    {"file://@/b%20c", "file://@/100%2525%20done", "file://@/%E6%97%A5%e6%9c%ac",
                     "file://@/a%23b%3Fc"},
                    {"b c", "100%25 done", "日本", "a#b?c"}},
        OperandCase{"trailingSlashAndDots", {"A"}, {"file://@/A/", "file://@/B/../A"}, {"A"}},
        OperandCase{"queryAndFragment", {"A", "B"}, {"file://@/A?q=1", "file://@/B#f"}, {"A", "B"}},
        OperandCase{"otherScheme", {"A", "B"}, {"http://host@/A", "B", "sftp://@/A"}, {"B"}},
        OperandCase{"onlyOtherScheme", {"A"}, {"http://localhost@/A"}, {}},
        OperandCase{"otherHost", {"A", "B"}, {"file://host@/A", "B"}, {"B"}},
        OperandCase{"encodedSlash", {"A/B", "B"}, {"file://@/A%2FB", "B"}, {"B"}},
        OperandCase{"encodedNUL", {"A", "B"}, {"file://@/A%00", "B"}, {"B"}},
        OperandCase{"encodedNotUTF8", {"\xff", "B"}, {"file://@/%FF", "B"}, {"B"}},
        OperandCase{"urlAndPathOfOneFolder", {"b c"}, {"file://@/b%20c", "b c"}, {"b c"}}),
    RowName());

}  // namespace

}  // namespace velmora::process
