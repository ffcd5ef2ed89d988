#include "extension/VelmoraFinderActionExtension.h"
#include "tests/fakes/FakeExtensionHost.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace velmora {
namespace {

class PrincipalClass : public testing::Test {
 protected:
  PrincipalClass() {
    fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
    fake.fileSystem.directories.insert("/a");
  }

  FakePlatform fake;
};

TEST_F(PrincipalClass, mayBeDestroyedDuringItsRequest) {
  auto extension = std::make_unique<VelmoraFinderActionExtension>(fake.platform());
  const PendingLoad load;
  const auto context = contextWith({load.provider()});
  extension->beginRequestWithExtensionContext(context);
  extension.reset();
  load.answerPath("/a");
  fake.mainQueue.runAll();
  EXPECT_EQ(context->ends->completedCount, 1);
}

/// Threads that answer the loads in an order of their own.
class LoadingThreads {
 public:
  explicit LoadingThreads(unsigned count) {
    for (unsigned seed = 0; seed < count; ++seed) {
      threads_.emplace_back([this, random = std::mt19937(seed)]() mutable {
        while (std::function<void()> answer = take(random)) {
          answer();
        }
      });
    }
  }
  LoadingThreads(const LoadingThreads&) = delete;
  LoadingThreads& operator=(const LoadingThreads&) = delete;
  ~LoadingThreads() {
    {
      const std::lock_guard guard(lock_);
      isClosed_ = true;
    }
    changed_.notify_all();
  }

  void add(std::function<void()> answer) {
    {
      const std::lock_guard guard(lock_);
      answers_.push_back(std::move(answer));
    }
    changed_.notify_one();
  }

 private:
  std::function<void()> take(std::mt19937& random) {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] { return isClosed_ || !answers_.empty(); });
    if (answers_.empty()) {
      return nullptr;
    }
    std::swap(answers_[random() % answers_.size()], answers_.back());
    std::function<void()> answer = std::move(answers_.back());
    answers_.pop_back();
    return answer;
  }

  std::mutex lock_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> answers_;
  bool isClosed_ = false;
  std::vector<JoiningThread> threads_;
};

TEST_F(PrincipalClass, keepsAThousandConcurrentRequestsSeparate) {
  constexpr int requestCount = 1000;
  constexpr int providerCount = 32;
  std::vector<std::shared_ptr<RequestEnds>> ends;
  std::set<std::string> expectedRequests;
  {
    LoadingThreads threads(4);
    const VelmoraFinderActionExtension extension(fake.platform());
    for (int request = 0; request < requestCount; ++request) {
      std::vector<std::shared_ptr<ItemProvider>> providers;
      std::string expectedPaths;
      for (int position = 0; position < providerCount; ++position) {
        const std::string path = "/r" + std::to_string(request) + "p" + std::to_string(position);
        fake.fileSystem.directories.insert(path);
        expectedPaths += (position == 0 ? "\n    \"\\" : ",\n    \"\\") + path + "\"";
        providers.push_back(std::make_shared<FakeItemProvider>(
            [&threads, path](const ItemProvider::LoadCompletion& completion) {
              threads.add([completion, path] {
                completion(FileURL{.path = path}, nullptr);
                completion(FileURL{.path = "/a"}, nullptr);
              });
            }));
      }
      expectedRequests.insert("[" + expectedPaths + "\n  ]");
      const auto context = contextWith(std::move(providers));
      ends.push_back(context->ends);
      extension.beginRequestWithExtensionContext(context);
    }
  }
  fake.mainQueue.runAll();
  for (const std::shared_ptr<RequestEnds>& end : ends) {
    EXPECT_EQ(end->completedCount, 1);
    EXPECT_EQ(end->cancelledCount, 0);
  }
  std::set<std::string> requests;
  for (const auto& [path, request] : fake.fileSystem.files) {
    const std::size_t begin = request.find('[');
    requests.insert(request.substr(begin, request.rfind(']') + 1 - begin));
  }
  EXPECT_EQ(requests, expectedRequests);
}

}  // namespace
}  // namespace velmora
