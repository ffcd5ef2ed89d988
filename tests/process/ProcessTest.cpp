#include "tests/process/ProcessTest.h"

#include <algorithm>
#include <iterator>

namespace velmora::process {

ProcessTest::ProcessTest()
    : command{.arguments = {VELMORA_TEST_PROGRAM},
              .environment = home.environment(),
              .input = {},
              .workingDirectory = home.path()} {
  adoptOrphans();
}

Outcome ProcessTest::run(const std::vector<std::string>& arguments) {
  Command complete = command;
  complete.arguments.insert(complete.arguments.end(), arguments.begin(), arguments.end());
  listingBefore_ = home.listing();
  childrenBefore_ = children();
  return process::run(complete);
}

std::set<std::string> ProcessTest::made() const {
  const std::set<std::string> listing = home.listing();
  std::set<std::string> result;
  std::ranges::set_symmetric_difference(listing, listingBefore_,
                                        std::inserter(result, result.end()));
  return result;
}

std::set<pid_t> ProcessTest::leftRunning() const {
  const std::set<pid_t> now = children();
  std::set<pid_t> result;
  std::ranges::set_difference(now, childrenBefore_, std::inserter(result, result.end()));
  return result;
}

Request ProcessTest::onlyRequest() {
  std::set<std::string> files = made();
  for (const char* directory : {"container/", "container/Warp/", "container/Warp/FinderHandoff/"}) {
    files.erase(directory);
  }
  EXPECT_EQ(files.size(), 1U) << ::testing::PrintToString(files);
  const std::string file = files.empty() ? std::string() : *files.begin();
  const std::filesystem::path path = home.path() / file;
  EXPECT_EQ(path.parent_path(), home.requestDirectory());
  EXPECT_TRUE(hasForm(path.filename().string(), requestNameForm)) << file;
  return ::testing::Test::HasFailure() ? Request() : parseRequest(readFile(path));
}

void ProcessTest::expectCompleted(const Outcome& outcome) {
  EXPECT_EQ(outcome.exitStatus, 0);
  EXPECT_EQ(outcome.signal, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.error, "");
  EXPECT_TRUE(outcome.released);
}

void ProcessTest::expectCancelled(const Outcome& outcome, int exitStatus,
                                  const std::string& error) {
  EXPECT_EQ(outcome.exitStatus, exitStatus);
  EXPECT_EQ(outcome.signal, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.error, error);
  EXPECT_TRUE(outcome.released);
  EXPECT_EQ(made(), std::set<std::string>());
  EXPECT_EQ(leftRunning(), std::set<pid_t>());
}

void ProcessTest::installApplication(const std::string& lines) {
  writeFile(home.dataHome() / "applications" / "io.tolvane.Velmora.desktop",
            "[Desktop Entry]\nType=Application\nName=Velmora\n" + lines);
}

std::unique_ptr<LaunchedApplication> ProcessTest::launched() {
  const std::set<pid_t> left = leftRunning();
  if (left.size() != 1) {
    ADD_FAILURE() << "left running: " << ::testing::PrintToString(left);
    return nullptr;
  }
  auto application = std::make_unique<LaunchedApplication>(launches);
  EXPECT_EQ(left, std::set<pid_t>{application->process()});
  return application;
}

std::string ProcessTest::execLine(const std::string& arguments) const {
  return "Exec=" + helperCommand({"launched", launches.path(), arguments}) + "\n";
}

std::vector<Record> named(const std::vector<Record>& records, std::string_view member) {
  std::vector<Record> result;
  std::ranges::copy_if(records, std::back_inserter(result),
                       [&](const Record& record) { return record.value("member") == member; });
  return result;
}

}  // namespace velmora::process
