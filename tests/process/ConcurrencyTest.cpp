// Many concurrent requests in one container: each writes its file, and no file is seen unfinished.

#include "tests/process/ProcessTest.h"

#include <sys/inotify.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstring>
#include <set>
#include <thread>

namespace velmora::process {

namespace {

/// Reads every request as soon as its name appears.
class RequestWatcher {
 public:
  explicit RequestWatcher(std::filesystem::path directory)
      : directory_(std::move(directory)),
        events_(FileDescriptor::adopt(::inotify_init1(IN_CLOEXEC))) {
    if (::inotify_add_watch(events_.get(), directory_.c_str(), IN_CREATE | IN_MOVED_TO) < 0) {
      throw std::runtime_error("no watch: " + directory_.string());
    }
  }

  /// Returns once `last` has appeared in the directory.
  void watchUntil(const std::string& last) {
    while (!names_.contains(last)) {
      alignas(inotify_event) std::array<std::byte, 65536> buffer{};
      const ssize_t size = ::read(events_.get(), buffer.data(), buffer.size());
      for (ssize_t offset = 0; offset < size;) {
        inotify_event event{};
        std::memcpy(&event, &buffer[static_cast<std::size_t>(offset)], sizeof event);
        const auto* name =
            reinterpret_cast<const char*>(&buffer[static_cast<std::size_t>(offset) + sizeof event]);
        see(event.len == 0 ? "" : name);
        offset += static_cast<ssize_t>(sizeof event + event.len);
      }
    }
  }

  const std::set<std::string>& names() const { return names_; }
  /// The files that were no whole request when read, with the reason.
  const std::vector<std::string>& faults() const { return faults_; }

 private:
  void see(const std::string& name) {
    names_.insert(name);
    if (!name.ends_with(".json")) {
      return;
    }
    const std::string json = readFile(directory_ / name);
    try {
      parseRequest(json);
    } catch (const std::exception& error) {
      faults_.push_back(name + ": " + error.what() + ": " + json);
    }
  }

  std::filesystem::path directory_;
  FileDescriptor events_;
  std::set<std::string> names_;
  std::vector<std::string> faults_;
};

class ConcurrencyTest : public ProcessTest {
 protected:
  /// The number of failed requests among `count` successive requests for `folder`.
  int failures(const std::string& folder, int count) const {
    Command complete = command;
    complete.arguments.insert(complete.arguments.end(), {"--no-notify", "--", folder});
    int failed = 0;
    for (int request = 0; request < count; ++request) {
      const Outcome outcome = process::run(complete);
      failed += outcome.exitStatus == 0 && outcome.error.empty() ? 0 : 1;
    }
    return failed;
  }
};

TEST_F(ConcurrencyTest, everyRequestIsWholeFromTheMomentItAppears) {
  constexpr int writers = 8;
  constexpr int requestsEach = 25;
  const std::string end = "end";
  std::filesystem::create_directories(home.requestDirectory());
  RequestWatcher watcher(home.requestDirectory());
  std::thread watching([&] { watcher.watchUntil(end); });
  std::atomic<int> failed = 0;
  std::vector<std::thread> threads;
  for (int writer = 0; writer < writers; ++writer) {
    const std::string folder = home.makeFolder("folder " + std::to_string(writer));
    threads.emplace_back([this, &failed, folder] { failed += failures(folder, requestsEach); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  writeFile(home.requestDirectory() / end, "");
  watching.join();

  EXPECT_EQ(failed, 0);
  EXPECT_EQ(watcher.faults(), std::vector<std::string>());
  std::map<std::string, int> requests;
  for (const std::string& name : namesIn(home.requestDirectory())) {
    if (name == end) {
      continue;
    }
    EXPECT_TRUE(hasForm(name, requestNameForm)) << name;
    EXPECT_TRUE(watcher.names().contains(name)) << name;
    const Request request = parseRequest(readFile(home.requestDirectory() / name));
    ASSERT_EQ(request.folderPaths.size(), 1U);
    ++requests[request.folderPaths.front()];
  }
  EXPECT_EQ(requests.size(), std::size_t{writers});
  for (const auto& [folder, count] : requests) {
    EXPECT_EQ(count, requestsEach) << folder;
  }
}

}  // namespace

}  // namespace velmora::process
