#include "tests/process/ProcessTest.h"

#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace velmora::process {

namespace filesystem = std::filesystem;

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
  const filesystem::path path = home.path() / file;
  EXPECT_EQ(path.parent_path(), home.requestDirectory());
  EXPECT_TRUE(hasForm(path.filename().string(), requestNameForm)) << file;
  return HasFailure() ? Request() : parseRequest(readFile(path));
}

void ProcessTest::expectCompleted(const Outcome& outcome) {
  EXPECT_EQ(outcome.exitStatus, 0);
  EXPECT_EQ(outcome.signal, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.error, "");
  EXPECT_TRUE(outcome.released);
}

void ProcessTest::expectHandedOver(const Outcome& outcome,
                                   const std::vector<std::string>& folders) {
  expectCompleted(outcome);
  EXPECT_EQ(leftRunning(), std::set<pid_t>());
  EXPECT_EQ(onlyRequest().folderPaths, folders);
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

void ProcessTest::runAs(unsigned user) {
  const auto copy = [this](const filesystem::path& from, const char* name) {
    filesystem::copy(from, home.path() / name, filesystem::copy_options::recursive);
    return home.path() / name;
  };
  command.environment["VELMORA_RESOURCE_DIR"] = copy(VELMORA_TEST_RESOURCES, "resources");
  // A coverage build writes its counts there. In the home, the test would take them for changes. If
  // they cannot be written, standard error gets a message.
  filesystem::permissions(countsOfOthers_.path(), filesystem::perms(0777));
  command.environment["GCOV_PREFIX"] = countsOfOthers_.path();
  const std::string number = std::to_string(user);
  std::vector<std::string> prefix;
  if (::geteuid() == 0) {
    prefix = {"setpriv", "--reuid=" + number, "--regid=" + number, "--clear-groups", "--"};
  } else if (user != nobody) {
    prefix = {"unshare", "--map-user=" + number, "--"};
  }
  prefix.push_back(copy(command.arguments.front(), "program"));
  command.arguments = std::move(prefix);
  for (const filesystem::path& entry : {home.path(), home.runtimeDirectory()}) {
    filesystem::permissions(entry, filesystem::perms(0777));
  }
}

}  // namespace velmora::process
