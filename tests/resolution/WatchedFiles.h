// Another reader's files, and who looks at them.
#pragma once

#include "platform/FileReader.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace velmora {

class WatchedFiles final : public FileReader {
 public:
  explicit WatchedFiles(const FileReader& files) : files_(files) {}

  /// Called before each file is read or opened, on whatever thread does it.
  std::function<void(std::string_view path)> reading = [](std::string_view) {};

  /// How many threads have read a file.
  [[nodiscard]] std::size_t threadCount() const {
    const std::lock_guard guard(mutex_);
    return threads_.size();
  }

  /// Whether anybody has asked for what is at `path`.
  [[nodiscard]] bool wasLookedFor(const std::string& path) const {
    const std::lock_guard guard(mutex_);
    return paths_.contains(path);
  }

  bool exists(std::string_view path) const override {
    noteLook(path);
    return files_.exists(path);
  }
  bool isDirectory(std::string_view path) const override {
    noteLook(path);
    return files_.isDirectory(path);
  }
  std::vector<std::string> entryNames(std::string_view path) const override {
    noteLook(path);
    return files_.entryNames(path);
  }
  std::string read(std::string_view path, std::size_t maximumLength) const override {
    noteReading(path);
    return files_.read(path, maximumLength);
  }
  std::unique_ptr<FileContent> open(std::string_view path,
                                    std::size_t maximumLength) const override {
    noteReading(path);
    return files_.open(path, maximumLength);
  }

 private:
  void noteLook(std::string_view path) const {
    const std::lock_guard guard(mutex_);
    paths_.emplace(path);
  }

  void noteReading(std::string_view path) const {
    noteLook(path);
    {
      const std::lock_guard guard(mutex_);
      threads_.insert(std::this_thread::get_id());
    }
    reading(path);
  }

  const FileReader& files_;
  mutable std::mutex mutex_;
  mutable std::set<std::thread::id> threads_;
  mutable std::set<std::string> paths_;
};

}  // namespace velmora
