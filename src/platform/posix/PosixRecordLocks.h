// Releases record locks through POSIX calls.
#pragma once

#include "platform/RecordLocks.h"

namespace velmora {

/// Stateless; see RecordLocks for the contract.
class PosixRecordLocks final : public RecordLocks {
 public:
  void unlockWholeFile(int fileDescriptor) noexcept override;
  void close(int fileDescriptor) noexcept override;
};

}  // namespace velmora
