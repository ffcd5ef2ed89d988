// Operands as file managers and people write them: hostile names, relative paths, file URLs.

#include "tests/process/ProcessTest.h"

namespace velmora::process {

namespace {

class OperandTest : public ProcessTest {
 protected:
  OperandTest() {
    home.makeFile("file");
    command.workingDirectory = home.folders();
  }

  /// Runs the program with `operands`, in which "@" stands for the working directory. Expects
  /// exactly these folders below it to arrive. Creates the folders and the `others` first.
  void expectArrival(const std::vector<std::string>& operands,
                     const std::vector<std::string>& folders,
                     const std::vector<std::string>& others = {}) {
    std::vector<std::string> arguments = {"--"};
    for (const std::string& operand : operands) {
      arguments.push_back(substituted(operand, "@", home.folders().native()));
    }
    for (const std::string& folder : others) {
      home.makeFolder(folder);
    }
    std::vector<std::string> paths;
    for (const std::string& folder : folders) {
      paths.push_back(home.makeFolder(folder));
    }
    expectHandedOver(run(arguments), paths);
  }
};

TEST_F(OperandTest, hostileNamesArrive) {
  const std::vector<std::string> names = {"[a,b]",
                                          "{a,b}",
                                          "a\tb",
                                          "100%",
                                          "-dash",
                                          "--restore",
                                          "--files0-from=-",
                                          "-",
                                          "--",
                                          "100%25 done",
                                          "%s%n",
                                          "a\nb",
                                          "\x1b[31m\x7f",
                                          "dq\"q",
                                          "it's",
                                          "dollar$HOME",
                                          "back\\slash",
                                          "`id`",
                                          "  b  ",
                                          "~",
                                          "a=b",
                                          "#what?",
                                          "日本語 👩‍👩‍👧",
                                          "...",
                                          "a:b"};
  std::vector<std::string> twice = names;
  for (const std::string& name : names) {
    twice.push_back("@/" + name);
  }
  expectArrival(twice, names);
}

TEST_F(OperandTest, pathsArriveAbsoluteAndUniqueInTheirFirstSpelling) {
  expectArrival({"A/B", "", "./A/../C/.", "@/A/../D", "\xff\xfe", "A//B/", "D", "file", "missing",
                 "file/", "cafe\u0301", "caf\u00e9", "\u00fc", "u\u0308"},
                {"A/B", "C", "D", "cafe\u0301", "\u00fc"}, {"\xff\xfe", "caf\u00e9", "u\u0308"});
}

TEST_F(OperandTest, fileURLsArriveAsPaths) {
  expectArrival({"file://@/A", "FILE://LocalHost@/B/../C/", "http://host@/A", "file://host@/E",
                 "file://@/b%20c", "b c", "file://@/a%23b%3Fc?q=1", "file://@/A%2FB", "file:@/D"},
                {"A", "C", "b c", "a#b?c", "D"}, {"A/B", "E"});
}

TEST_F(OperandTest, operandsThatNameNoFolderAreIgnored) {
  home.makeFolder("A");
  home.makeFolder("caf\xe9");
  expectCancelled(run({"--", "", "caf\xe9", "http://localhost" + home.folders().native() + "/A"}),
                  1, message("en", chooseWarpFolders) + "\n");
}

}  // namespace

}  // namespace velmora::process
