#include "WatchedFileReader.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

namespace velmora::inspect {

namespace {

class WatchedContent final : public FileContent {
 public:
  WatchedContent(std::unique_ptr<FileContent> content, double length,
                 const std::function<void(double part)>& watch)
      : content_(std::move(content)), length_(length), watch_(watch) {}

  std::size_t read(char* room, std::size_t size) override {
    const std::size_t count = content_->read(room, size);
    readLength_ += static_cast<double>(count);
    watch_(std::min(readLength_ / length_, 1.0));
    return count;
  }

 private:
  std::unique_ptr<FileContent> content_;
  /// At least 1.
  double length_;
  double readLength_ = 0;
  const std::function<void(double part)>& watch_;
};

}  // namespace

WatchedFileReader::WatchedFileReader(const FileReader& files,
                                     std::function<void(double part)> watch)
    : files_(files), watch_(std::move(watch)) {}

std::unique_ptr<FileContent> WatchedFileReader::open(std::string_view path,
                                                     std::size_t maxLength) const {
  std::unique_ptr<FileContent> content = files_.open(path, maxLength);
  // Without its length, the file counts as read with its first piece.
  std::error_code error;
  const std::uintmax_t length = std::filesystem::file_size(path, error);
  return std::make_unique<WatchedContent>(
      std::move(content), error ? 1.0 : std::max(static_cast<double>(length), 1.0), watch_);
}

}  // namespace velmora::inspect
