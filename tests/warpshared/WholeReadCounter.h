// Counts how often a file is read as a whole, which happens after the streaming reader refuses it.
#pragma once

#include "platform/FileReader.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Counts the calls of read() and passes them to `files`, which must outlive this object.
class WholeReadCounter final : public FileReader {
 public:
  explicit WholeReadCounter(const FileReader& files) : files_(files) {}

  [[nodiscard]] std::size_t count() const { return count_; }

  bool exists(std::string_view path) const override { return files_.exists(path); }
  bool isDirectory(std::string_view path) const override { return files_.isDirectory(path); }
  std::vector<std::string> entryNames(std::string_view path, std::size_t maxCount) const override {
    return files_.entryNames(path, maxCount);
  }

  std::string read(std::string_view path, std::size_t maxLength) const override {
    ++count_;
    return files_.read(path, maxLength);
  }

  std::unique_ptr<FileContent> open(std::string_view path, std::size_t maxLength) const override {
    return files_.open(path, maxLength);
  }

 private:
  const FileReader& files_;
  mutable std::size_t count_ = 0;
};

}  // namespace velmora
