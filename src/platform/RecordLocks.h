// Giving back advisory record locks: they exclude other processes, not threads of the same one.
#pragma once

namespace velmora {

/// Calls may come from any thread. Neither operation waits, and neither fails outward: who gives
/// something back has nobody to tell.
class RecordLocks {
 public:
  virtual ~RecordLocks() = default;

  /// Gives up this process's lock on the whole of the open file, however long that is or becomes.
  virtual void unlockWholeFile(int fileDescriptor) noexcept = 0;

  /// Closes the file, which drops every record lock that this process has on it.
  virtual void close(int fileDescriptor) noexcept = 0;
};

}  // namespace velmora
