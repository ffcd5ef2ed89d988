// Reads files through POSIX calls, trusting nothing that lies in the file system.
#pragma once

#include "platform/FileReader.h"

namespace velmora {

/// Stateless; see FileReader for the contract. Files and directories are opened without blocking,
/// and what was opened is looked at before anything is read from it, so that a FIFO or device in
/// their place cannot hold the caller up.
class PosixFileReader final : public FileReader {
 public:
  bool exists(std::string_view path) const override;
  bool isDirectory(std::string_view path) const override;
  std::string read(std::string_view path, std::size_t maxLength) const override;
  std::unique_ptr<FileContent> open(std::string_view path, std::size_t maxLength) const override;
  std::vector<std::string> entryNames(std::string_view path, std::size_t maxCount) const override;
};

}  // namespace velmora
