// Creates files and directories through POSIX calls.
#pragma once

#include "platform/FileWriter.h"

namespace velmora {

/// Stateless; see FileWriter for the contract.
///
/// If the file system supports it, a file has no name until it is complete, so that a killed
/// process leaves nothing behind. Otherwise the file is written as `.<name>.partial` in the same
/// directory, and then renamed. A later call removes such a remainder (see PartialFiles.h).
class PosixFileWriter final : public FileWriter {
 public:
  void createDirectories(std::string_view path) override;
  void writeAtomically(std::string_view path, std::string_view bytes) override;
};

}  // namespace velmora
