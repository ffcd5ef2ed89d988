// Releases advisory record locks, which exclude other processes but not threads of the same
// process.
#pragma once

namespace velmora {

/// Calls may come from any thread. Neither operation waits. Failures are not reported, because a
/// caller that releases a lock cannot act on them.
class RecordLocks {
 public:
  virtual ~RecordLocks() = default;

  /// Releases this process's lock on the whole open file, whatever length it has or gets.
  virtual void unlockWholeFile(int fileDescriptor) noexcept = 0;

  /// Closes the file, which drops every record lock that this process has on it.
  virtual void close(int fileDescriptor) noexcept = 0;
};

}  // namespace velmora
