#include "tests/fakes/FakePlatform.h"

#include "platform/PlatformError.h"

#include <algorithm>
#include <cerrno>

namespace velmora {

namespace {

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

/// Adds the last name of `entry` if `entry` lies directly in `directory`.
void addName(std::set<std::string>& names, std::string_view entry, std::string_view directory) {
  const std::size_t slash = entry.rfind('/');
  const std::string_view name = entry.substr(slash + 1);
  if (!name.empty() && entry.substr(0, std::max<std::size_t>(slash, 1)) == directory) {
    names.emplace(name);
  }
}

class FakeLocalizationFolder final : public LocalizationFolder {
 public:
  explicit FakeLocalizationFolder(const FakeExtensionBundle::Table& table) : table_(table) {}

  std::string localizedString(std::string_view key, std::string_view value) const override {
    const auto text = table_.find(key);
    return text != table_.end() ? text->second : std::string(value);
  }

 private:
  const FakeExtensionBundle::Table table_;
};

}  // namespace

void FakeMainQueue::async(std::function<void()> task) {
  const std::lock_guard guard(lock_);
  if (failure) {
    std::exchange(failure, nullptr)();
  }
  tasks_.push_back(std::move(task));
}

std::size_t FakeMainQueue::pendingTaskCount() const {
  const std::lock_guard guard(lock_);
  return tasks_.size();
}

void FakeMainQueue::runAll() {
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

FakeFileSystem::FakeFileSystem(Journal& journal) : journal_(journal) {}

FakeFileSystem::~FakeFileSystem() = default;

bool FakeFileSystem::exists(std::string_view path) const {
  return directories.contains(path) || files.contains(path);
}

bool FakeFileSystem::isDirectory(std::string_view path) const { return directories.contains(path); }

std::string FakeFileSystem::read(std::string_view path, std::size_t maxLength) const {
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
  if (file->second.size() > maxLength) {
    throw posixError(EFBIG);
  }
  return file->second;
}

std::unique_ptr<FileContent> FakeFileSystem::open(std::string_view path,
                                                  std::size_t maxLength) const {
  return std::make_unique<FakeFileContent>(read(path, maxLength));
}

std::vector<std::string> FakeFileSystem::entryNames(std::string_view path,
                                                    std::size_t maxCount) const {
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
  if (names.size() > maxCount) {
    throw posixError(EFBIG);
  }
  return {names.begin(), names.end()};
}

void FakeFileSystem::createDirectories(std::string_view path) {
  if (createDirectoriesFailure) {
    createDirectoriesFailure();
  }
  for (std::size_t end = path.find('/', 1); end != std::string_view::npos;
       end = path.find('/', end + 1)) {
    createDirectory(path.substr(0, end));
  }
  createDirectory(path);
}

void FakeFileSystem::writeAtomically(std::string_view path, std::string_view bytes) {
  if (writeFailure) {
    writeFailure();
  }
  if (!directories.contains(path.substr(0, std::max<std::size_t>(path.rfind('/'), 1)))) {
    throw posixError(ENOENT);
  }
  // Adds the file last, so that no file exists if memory runs out.
  journal_.push_back("write " + std::string(path));
  files.insert_or_assign(std::string(path), std::string(bytes));
}

void FakeFileSystem::createDirectory(std::string_view path) {
  if (files.contains(path)) {
    throw posixError(EEXIST);
  }
  directories.emplace(path);
}

std::optional<Text> FakeSharedLocations::groupContainer(std::string_view groupIdentifier) const {
  const auto container = groupContainers.find(groupIdentifier);
  return container != groupContainers.end() ? std::optional(container->second) : std::nullopt;
}

std::vector<Text> FakeSharedLocations::applicationSupportDirectories() const {
  return supportDirectories;
}

std::optional<Text> FakeSharedDefaults::string(std::string_view suiteName,
                                               std::string_view key) const {
  const auto value = values.find({std::string(suiteName), std::string(key)});
  return value != values.end() ? std::optional(value->second) : std::nullopt;
}

std::vector<Text> FakePreferredLanguages::preferredLanguages() const { return tags; }

std::optional<Text> FakeExtensionBundle::bundleIdentifier() const { return identifier; }

std::unique_ptr<LocalizationFolder> FakeExtensionBundle::localizationFolder(
    std::string_view language) const {
  const auto table = tables.find(language);
  return table != tables.end() ? std::make_unique<FakeLocalizationFolder>(table->second) : nullptr;
}

void FakeNotificationCenter::post(std::string_view name) noexcept {
  posted.emplace_back(name);
  journal_.push_back("post " + std::string(name));
}

std::optional<Text> FakeWorkspace::applicationLocation(std::string_view bundleIdentifier) noexcept {
  const auto location = installedApplications.find(bundleIdentifier);
  return location != installedApplications.end() ? std::optional(location->second) : std::nullopt;
}

void FakeWorkspace::openApplication(const Text& location,
                                    OpenConfiguration configuration) noexcept {
  opened.emplace_back(location, configuration);
  journal_.push_back("open " + location.utf8());
}

void FakeLogger::log(std::string_view line) noexcept {
  lines.emplace_back(line);
  journal_.emplace_back("log");
}

std::chrono::system_clock::time_point FakeClock::now() const { return time; }

std::string FakeIdentifierSource::uuid() {
  const std::string number = std::to_string(++count_);
  return "00000000-0000-4000-8000-" + std::string(12 - number.size(), '0') + number;
}

FakePlatform::FakePlatform() = default;

FakePlatform::~FakePlatform() = default;

Platform FakePlatform::platform() { return platform(fileSystem); }

Platform FakePlatform::platform(const FileReader& files) {
  return {bundle,        files,     fileSystem, paths,  locations, defaults,   languages,
          notifications, workspace, mainQueue,  logger, clock,     identifiers};
}

}  // namespace velmora
