// Reads files through POSIX calls, trusting nothing that lies in the file system.
#pragma once

#include "platform/FileReader.h"

namespace velmora {

/// Stateless; see FileReader for the contract. `read` opens without blocking and takes regular
/// files only, so that a FIFO or device in a file's place cannot hold the caller up.
class PosixFileReader final : public FileReader {
 public:
  bool exists(std::string_view path) const override;
  bool isDirectory(std::string_view path) const override;
  std::string read(std::string_view path) const override;
};

}  // namespace velmora
