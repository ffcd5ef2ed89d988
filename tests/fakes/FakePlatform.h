// In-memory stand-ins for the whole platform: public state to fill, switches to fail, and a record
// of what was asked. Each passes the contract suite of its interface (tests/contracts).
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
#include "platform/PlatformError.h"
#include "platform/PreferredLanguages.h"
#include "platform/SharedDefaults.h"
#include "platform/SharedLocations.h"
#include "platform/Workspace.h"
#include "platform/posix/PosixPathStandardizer.h"

#include <algorithm>
#include <cerrno>
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

/// What happened across several fakes, in order.
using Journal = std::vector<std::string>;

/// Runs its tasks when the test says so, on the thread of the test.
class FakeMainQueue final : public MainQueue {
 public:
  /// Thrown by the next call of `async`, once.
  std::function<void()> failure;

  void async(std::function<void()> task) override {
    const std::lock_guard guard(lock_);
    if (failure) {
      std::exchange(failure, nullptr)();
    }
    tasks_.push_back(std::move(task));
  }

  std::size_t pendingTaskCount() const {
    const std::lock_guard guard(lock_);
    return tasks_.size();
  }

  /// Runs tasks until none is left, those included that tasks add.
  void runAll() {
    for (;;) {
      std::unique_lock guard(lock_);
      if (tasks_.empty()) {
        return;
      }
      const std::function<void()> task = std::move(tasks_.front());
      tasks_.pop_front();
      guard.unlock();
      task();
    }
  }

 private:
  mutable std::mutex lock_;
  std::deque<std::function<void()>> tasks_;
};

class FakeFileContent final : public FileContent {
 public:
  explicit FakeFileContent(std::string bytes) : bytes_(std::move(bytes)) {}

  std::size_t read(char* room, std::size_t size) override {
    const std::size_t count = bytes_.copy(room, size, position_);
    position_ += count;
    return count;
  }

 private:
  std::string bytes_;
  std::size_t position_ = 0;
};

/// Directories and files by their paths.
class FakeFileSystem final : public FileReader, public FileWriter {
 public:
  explicit FakeFileSystem(Journal& journal) : journal_(journal) {}

  std::set<std::string, std::less<>> directories = {"/"};
  std::map<std::string, std::string, std::less<>> files;
  /// Thrown by the operation whenever set.
  std::function<void()> createDirectoriesFailure;
  std::function<void()> writeFailure;
  std::function<void()> entryNamesFailure;
  std::function<void()> readFailure;

  bool exists(std::string_view path) const override {
    return directories.contains(path) || files.contains(path);
  }

  bool isDirectory(std::string_view path) const override { return directories.contains(path); }

  std::string read(std::string_view path, std::size_t maximumLength) const override {
    if (readFailure) {
      readFailure();
    }
    if (directories.contains(path)) {
      throw posixError(EISDIR);
    }
    const auto file = files.find(path);
    if (file == files.end()) {
      throw posixError(ENOENT);
    }
    if (file->second.size() > maximumLength) {
      throw posixError(EFBIG);
    }
    return file->second;
  }

  std::unique_ptr<FileContent> open(std::string_view path,
                                    std::size_t maximumLength) const override {
    return std::make_unique<FakeFileContent>(read(path, maximumLength));
  }

  std::vector<std::string> entryNames(std::string_view path) const override {
    if (entryNamesFailure) {
      entryNamesFailure();
    }
    if (!directories.contains(path)) {
      throw posixError(files.contains(path) ? ENOTDIR : ENOENT);
    }
    std::set<std::string> names;
    for (const std::string& directory : directories) {
      addName(names, directory, path);
    }
    for (const auto& [file, bytes] : files) {
      addName(names, file, path);
    }
    return {names.begin(), names.end()};
  }

  void createDirectories(std::string_view path) override {
    if (createDirectoriesFailure) {
      createDirectoriesFailure();
    }
    for (std::size_t end = path.find('/', 1); end != std::string_view::npos;
         end = path.find('/', end + 1)) {
      createDirectory(path.substr(0, end));
    }
    createDirectory(path);
  }

  void writeAtomically(std::string_view path, std::string_view bytes) override {
    if (writeFailure) {
      writeFailure();
    }
    if (!directories.contains(path.substr(0, std::max<std::size_t>(path.rfind('/'), 1)))) {
      throw posixError(ENOENT);
    }
    // The file last: when memory runs out, there must be none.
    journal_.push_back("write " + std::string(path));
    files.insert_or_assign(std::string(path), std::string(bytes));
  }

 private:
  /// Adds the last name of `entry` where that lies directly in `directory`.
  static void addName(std::set<std::string>& names, std::string_view entry,
                      std::string_view directory) {
    const std::size_t slash = entry.rfind('/');
    const std::string_view name = entry.substr(slash + 1);
    if (!name.empty() && entry.substr(0, std::max<std::size_t>(slash, 1)) == directory) {
      names.emplace(name);
    }
  }

  void createDirectory(std::string_view path) {
    if (files.contains(path)) {
      throw posixError(EEXIST);
    }
    directories.emplace(path);
  }

  Journal& journal_;
};

class FakeSharedLocations final : public SharedLocations {
 public:
  std::map<std::string, Text, std::less<>> groupContainers;
  std::vector<Text> supportDirectories;

  std::optional<Text> groupContainer(std::string_view groupIdentifier) const override {
    const auto container = groupContainers.find(groupIdentifier);
    return container != groupContainers.end() ? std::optional(container->second) : std::nullopt;
  }

  std::vector<Text> applicationSupportDirectories() const override { return supportDirectories; }
};

class FakeSharedDefaults final : public SharedDefaults {
 public:
  std::map<std::pair<std::string, std::string>, Text> values;

  std::optional<Text> string(std::string_view suiteName, std::string_view key) const override {
    const auto value = values.find({std::string(suiteName), std::string(key)});
    return value != values.end() ? std::optional(value->second) : std::nullopt;
  }
};

class FakePreferredLanguages final : public PreferredLanguages {
 public:
  std::vector<Text> tags;

  std::vector<Text> preferredLanguages() const override { return tags; }
};

class FakeLocalizationFolder final : public LocalizationFolder {
 public:
  using Table = std::map<std::string, std::string, std::less<>>;

  explicit FakeLocalizationFolder(Table table) : table_(std::move(table)) {}

  std::string localizedString(std::string_view key, std::string_view value) const override {
    const auto text = table_.find(key);
    return text != table_.end() ? text->second : std::string(value);
  }

 private:
  Table table_;
};

class FakeExtensionBundle final : public ExtensionBundle {
 public:
  std::optional<Text> identifier;
  std::map<std::string, FakeLocalizationFolder::Table, std::less<>> tables;

  std::optional<Text> bundleIdentifier() const override { return identifier; }

  std::unique_ptr<LocalizationFolder> localizationFolder(std::string_view language) const override {
    const auto table = tables.find(language);
    return table != tables.end() ? std::make_unique<FakeLocalizationFolder>(table->second)
                                 : nullptr;
  }
};

class FakeNotificationCenter final : public NotificationCenter {
 public:
  explicit FakeNotificationCenter(Journal& journal) : journal_(journal) {}

  std::vector<std::string> posted;

  void post(std::string_view name) noexcept override {
    posted.emplace_back(name);
    journal_.push_back("post " + std::string(name));
  }

 private:
  Journal& journal_;
};

class FakeWorkspace final : public Workspace {
 public:
  explicit FakeWorkspace(Journal& journal) : journal_(journal) {}

  std::map<std::string, Text, std::less<>> installedApplications;
  std::vector<std::pair<Text, OpenConfiguration>> opened;

  std::optional<Text> applicationLocation(std::string_view bundleIdentifier) noexcept override {
    const auto location = installedApplications.find(bundleIdentifier);
    return location != installedApplications.end() ? std::optional(location->second) : std::nullopt;
  }

  void openApplication(const Text& location, OpenConfiguration configuration) noexcept override {
    opened.emplace_back(location, configuration);
    journal_.push_back("open " + location.utf8());
  }

 private:
  Journal& journal_;
};

class FakeLogger final : public Logger {
 public:
  std::vector<std::string> lines;

  void log(std::string_view line) noexcept override { lines.emplace_back(line); }
};

class FakeClock final : public Clock {
 public:
  std::chrono::system_clock::time_point time = std::chrono::sys_seconds(std::chrono::seconds(0));

  std::chrono::system_clock::time_point now() const override { return time; }
};

/// 00000000-0000-4000-8000-000000000001 and so on.
class FakeIdentifierSource final : public IdentifierSource {
 public:
  std::string uuid() override {
    const std::string number = std::to_string(++count_);
    return "00000000-0000-4000-8000-" + std::string(12 - number.size(), '0') + number;
  }

 private:
  int count_ = 0;
};

/// One of each, and a platform made of them; paths are standardised by the real thing.
struct FakePlatform {
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
  FakeLogger logger;
  FakeClock clock;
  FakeIdentifierSource identifiers;

  Platform platform() {
    return {bundle,        fileSystem, fileSystem, paths,  locations, defaults,   languages,
            notifications, workspace,  mainQueue,  logger, clock,     identifiers};
  }
};

/// For the `failure` members above.
template <class Error>
std::function<void()> throwing(Error error) {
  return [error] { throw error; };
}

}  // namespace velmora
