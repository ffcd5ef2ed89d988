// Makes files and directories through POSIX calls.
#pragma once

#include "platform/FileWriter.h"

namespace velmora {

/// Stateless; see FileWriter for the contract.
///
/// Where the file system can, a file has no name until it is complete, so that even a process
/// killed half-way leaves nothing. Elsewhere it is written under the hidden name `.<name>.partial`
/// beside its final one, and renamed.
class PosixFileWriter final : public FileWriter {
 public:
  void createDirectories(std::string_view path) override;
  void writeAtomically(std::string_view path, std::string_view bytes) override;
};

}  // namespace velmora
