// In-memory fakes of the whole platform: public state to fill, switches to fail, and a record of
// the calls. Each fake passes the contract tests of its interface (tests/contracts).
#pragma once

#include "platform/Clock.h"
#include "platform/ExtensionBundle.h"
#include "platform/FileReader.h"
#include "platform/FileWriter.h"
#include "platform/IdentifierSource.h"
#include "platform/Logger.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"
#include "platform/PreferredLanguages.h"
#include "platform/SharedDefaults.h"
#include "platform/SharedLocations.h"
#include "platform/Workspace.h"
#include "platform/posix/PosixPathStandardizer.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {

/// Events of several fakes, in order.
using Journal = std::vector<std::string>;

/// Runs its tasks when the test asks for it, on the thread of the test.
class FakeMainQueue final : public MainQueue {
 public:
  /// The next call of `async` throws this, once.
  std::function<void()> failure;

  void async(std::function<void()> task) override;

  std::size_t pendingTaskCount() const;

  /// Runs tasks until none is left, also those that tasks add.
  void runAll();

 private:
  mutable std::mutex lock_;
  std::deque<std::function<void()>> tasks_;
};

/// Directories and files by their paths.
class FakeFileSystem final : public FileReader, public FileWriter {
 public:
  explicit FakeFileSystem(Journal& journal);
  ~FakeFileSystem() override;

  std::set<std::string, std::less<>> directories = {"/"};
  std::map<std::string, std::string, std::less<>> files;
  /// Each of these operations throws while its member is set.
  std::function<void()> createDirectoriesFailure;
  std::function<void()> writeFailure;
  std::function<void()> entryNamesFailure;
  std::function<void()> readFailure;

  bool exists(std::string_view path) const override;

  bool isDirectory(std::string_view path) const override;

  std::string read(std::string_view path, std::size_t maxLength) const override;

  std::unique_ptr<FileContent> open(std::string_view path, std::size_t maxLength) const override;

  std::vector<std::string> entryNames(std::string_view path, std::size_t maxCount) const override;

  void createDirectories(std::string_view path) override;

  void writeAtomically(std::string_view path, std::string_view bytes) override;

 private:
  void createDirectory(std::string_view path);

  Journal& journal_;
};

class FakeSharedLocations final : public SharedLocations {
 public:
  std::map<std::string, Text, std::less<>> groupContainers;
  std::vector<Text> supportDirectories;

  std::optional<Text> groupContainer(std::string_view groupIdentifier) const override;

  std::vector<Text> applicationSupportDirectories() const override;
};

class FakeSharedDefaults final : public SharedDefaults {
 public:
  std::map<std::pair<std::string, std::string>, Text> values;

  std::optional<Text> string(std::string_view suiteName, std::string_view key) const override;
};

class FakePreferredLanguages final : public PreferredLanguages {
 public:
  std::vector<Text> tags;

  std::vector<Text> preferredLanguages() const override;
};

class FakeExtensionBundle final : public ExtensionBundle {
 public:
  using Table = std::map<std::string, std::string, std::less<>>;

  std::optional<Text> identifier;
  std::map<std::string, Table, std::less<>> tables;

  std::optional<Text> bundleIdentifier() const override;

  std::unique_ptr<LocalizationFolder> localizationFolder(std::string_view language) const override;
};

class FakeNotificationCenter final : public NotificationCenter {
 public:
  explicit FakeNotificationCenter(Journal& journal) : journal_(journal) {}

  std::vector<std::string> posted;

  void post(std::string_view name) noexcept override;

 private:
  Journal& journal_;
};

class FakeWorkspace final : public Workspace {
 public:
  explicit FakeWorkspace(Journal& journal) : journal_(journal) {}

  std::map<std::string, Text, std::less<>> installedApplications;
  std::vector<std::pair<Text, OpenConfiguration>> opened;

  std::optional<Text> applicationLocation(std::string_view bundleIdentifier) noexcept override;

  void openApplication(const Text& location, OpenConfiguration configuration) noexcept override;

 private:
  Journal& journal_;
};

class FakeLogger final : public Logger {
 public:
  explicit FakeLogger(Journal& journal) : journal_(journal) {}

  std::vector<std::string> lines;

  void log(std::string_view line) noexcept override;

 private:
  Journal& journal_;
};

class FakeClock final : public Clock {
 public:
  std::chrono::system_clock::time_point time = std::chrono::sys_seconds(std::chrono::seconds(0));

  std::chrono::system_clock::time_point now() const override;
};

/// 00000000-0000-4000-8000-000000000001 and so on.
class FakeIdentifierSource final : public IdentifierSource {
 public:
  std::string uuid() override;

 private:
  int count_ = 0;
};

/// One fake of each kind, and a platform of them. Paths are standardised by the real
/// implementation.
struct FakePlatform {
  FakePlatform();
  FakePlatform(const FakePlatform&) = delete;
  FakePlatform& operator=(const FakePlatform&) = delete;
  ~FakePlatform();

  Journal journal;
  FakeExtensionBundle bundle;
  FakeFileSystem fileSystem{journal};
  PosixPathStandardizer paths;
  FakeSharedLocations locations;
  FakeSharedDefaults defaults;
  FakePreferredLanguages languages;
  FakeNotificationCenter notifications{journal};
  FakeWorkspace workspace{journal};
  FakeMainQueue mainQueue;
  FakeLogger logger{journal};
  FakeClock clock;
  FakeIdentifierSource identifiers;

  Platform platform();
  /// The same platform with another reader, such as one of real files.
  Platform platform(const FileReader& files);
};

/// For the `failure` members above.
template <class Error>
std::function<void()> throwing(Error error) {
  return [error] { throw error; };
}

}  // namespace velmora
