// Reads files through POSIX calls, and trusts nothing in the file system.
#pragma once

#include "platform/FileReader.h"

namespace velmora {

/// Stateless; see FileReader for the contract. Opens files and directories without blocking, and
/// checks the kind of the open file before reading it. A FIFO or device at the path therefore
/// cannot block the caller.
class PosixFileReader final : public FileReader {
 public:
  bool exists(std::string_view path) const override;
  bool isDirectory(std::string_view path) const override;
  std::string read(std::string_view path, std::size_t maxLength) const override;
  std::unique_ptr<FileContent> open(std::string_view path, std::size_t maxLength) const override;
  std::vector<std::string> entryNames(std::string_view path, std::size_t maxCount) const override;
};

}  // namespace velmora
