// Reports how far the reading of a file has come.
#pragma once

#include "platform/FileReader.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::inspect {

/// Reads through another reader. Calls `watch` with the part of an opened file that has been read,
/// from 0 to 1, after each piece.
class WatchedFileReader final : public FileReader {
 public:
  /// `files` is kept by reference.
  WatchedFileReader(const FileReader& files, std::function<void(double part)> watch);

  bool exists(std::string_view path) const override { return files_.exists(path); }
  bool isDirectory(std::string_view path) const override { return files_.isDirectory(path); }
  std::string read(std::string_view path, std::size_t maxLength) const override {
    return files_.read(path, maxLength);
  }
  std::unique_ptr<FileContent> open(std::string_view path, std::size_t maxLength) const override;
  std::vector<std::string> entryNames(std::string_view path, std::size_t maxCount) const override {
    return files_.entryNames(path, maxCount);
  }

 private:
  const FileReader& files_;
  std::function<void(double part)> watch_;
};

}  // namespace velmora::inspect
