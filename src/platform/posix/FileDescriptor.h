// An owned file descriptor, which the destructor closes.
#pragma once

#include <unistd.h>

#include <utility>

namespace velmora {

class FileDescriptor {
 public:
  /// Takes ownership of `descriptor`; a negative value means that there is none.
  static FileDescriptor adopt(int descriptor) { return FileDescriptor(descriptor); }

  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (isOpen()) {
      ::close(descriptor_);
    }
  }

  [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
  [[nodiscard]] int get() const { return descriptor_; }

  /// Returns the descriptor with its ownership; the caller must close it.
  [[nodiscard]] int release() { return std::exchange(descriptor_, -1); }

 private:
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;
};

}  // namespace velmora
